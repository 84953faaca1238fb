#include "platform/mactools/TopText.h"

#include "platform/TextScan.h"
#include "platform/Utf8.h"

#include <QtCore/QStringList>

namespace swabby {
namespace {

/// Where the header that begins at this place ends; no value when none begins there. The columns are as
/// wide as their widest cell, so any run of blanks divides them.
std::optional<std::size_t> headerEnd(std::string_view text, std::size_t begin)
{
    std::size_t at = begin;
    for (const std::string_view word :
         {std::string_view("PID"), std::string_view("COMMAND"), std::string_view("POWER")}) {
        if (at > begin) {
            const std::size_t next = text.find_first_not_of(' ', at);
            if (next == at)
                return std::nullopt;
            at = std::min(next, text.size());
        }
        if (text.substr(at, word.size()) != word)
            return std::nullopt;
        at += word.size();
    }
    return at;
}

std::string_view lastSample(std::string_view text)
{
    for (std::size_t at = text.rfind("PID"); at != std::string_view::npos;
         at = at == 0 ? std::string_view::npos : text.rfind("PID", at - 1))
        if (const auto end = headerEnd(text, at))
            return text.substr(*end);
    return {};
}

QString commandOf(const std::vector<std::string_view> &pieces)
{
    QStringList words;
    for (std::size_t i = 1; i + 1 < pieces.size(); ++i)
        words.append(textOf(pieces[i]));
    return words.join(QLatin1Char(' '));
}

} // namespace

std::vector<PowerRow> parseTop(std::string_view text)
{
    std::vector<PowerRow> rows;
    forEachLine(lastSample(text), [&](std::string_view line) {
        const std::vector<std::string_view> pieces = piecesOf(line);
        if (pieces.size() < 3)
            return true;
        const auto pid = integerOf<std::int32_t>(pieces.front());
        const auto power = numberOf(pieces.back());
        if (pid && power)
            rows.push_back({*pid, commandOf(pieces), *power});
        return true;
    });
    return rows;
}

} // namespace swabby
