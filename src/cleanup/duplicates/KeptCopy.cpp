#include "cleanup/duplicates/KeptCopy.h"

#include "platform/Utf8.h"

#include <QtCore/QRegularExpression>

#include <algorithm>
#include <tuple>

namespace swabby {

bool isNamedAsCopy(const std::string &name)
{
    // What browsers and file managers add: a number in brackets, which is no year, or the word for a copy in
    // some languages.
    static const QRegularExpression mark(
        QStringLiteral(R"(\([0-9]{1,3}\)|(?<!\p{L})(copy|kopie|copie|copia|cópia|kopia)(?!\p{L}))"),
        QRegularExpression::CaseInsensitiveOption | QRegularExpression::UseUnicodePropertiesOption);
    return mark.match(textOf(name)).hasMatch();
}

CandidateSet withKeptFirst(const Candidates &candidates, CandidateSet set, FirstBy firstBy)
{
    const auto rankOf = [&](CandidateIndex index) {
        const std::string &name = candidates.name(index);
        const std::int64_t modified = candidates.identity(index).modifiedNanoseconds;
        const auto now = firstBy == FirstBy::birth ? FileIdentity::of(candidates.path(index)) : std::nullopt;
        const std::int64_t born = now && now->bornNanoseconds != 0 ? now->bornNanoseconds : modified;
        return std::tuple(isNamedAsCopy(name), born, name.size());
    };
    auto kept = set.begin();
    auto best = rankOf(*kept);
    for (auto other = kept + 1;
         other != set.end() && candidates.folder(*other) == candidates.folder(set.front()); ++other)
        if (const auto rank = rankOf(*other); rank < best) {
            best = rank;
            kept = other;
        }
    std::rotate(set.begin(), kept, kept + 1);
    return set;
}

} // namespace swabby
