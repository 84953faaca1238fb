#include "ui/presentation/SvgCheck.h"

#include "platform/Utf8.h"

#include <QtCore/QXmlStreamReader>

#include <algorithm>
#include <array>

namespace swabby {
namespace {

constexpr qsizetype largestDrawing = 512 * 1024;
constexpr int mostElements = 20'000;

/// The filters that shadows and glows are made of.
constexpr std::array harmlessFilters = {
    "feBlend", "feColorMatrix", "feComponentTransfer", "feComposite", "feFlood",     "feFuncA",  "feFuncB",
    "feFuncG", "feFuncR",       "feGaussianBlur",      "feMerge",     "feMergeNode", "feOffset",
};

bool isHarmless(QStringView element)
{
    return !element.startsWith(QLatin1String("fe")) ||
           std::any_of(harmlessFilters.begin(), harmlessFilters.end(),
                       [&](const char *filter) { return element == QLatin1String(filter); });
}

} // namespace

bool mayBeDrawn(const QByteArray &file)
{
    // In one encoding only, so that both who read it see the same.
    const std::string_view text(file.constData(), static_cast<std::size_t>(file.size()));
    if (file.size() > largestDrawing || file.contains('\0') || !isUtf8(text))
        return false;
    QXmlStreamReader reader(file);
    int elements = 0;
    while (!reader.atEnd()) {
        const QXmlStreamReader::TokenType token = reader.readNext();
        const QStringView encoding = reader.documentEncoding();
        if (token == QXmlStreamReader::StartDocument && !encoding.isEmpty() &&
            encoding.compare(QLatin1String("utf-8"), Qt::CaseInsensitive) != 0)
            return false;
        // An entity can stand for any element.
        if (token == QXmlStreamReader::DTD && !reader.entityDeclarations().isEmpty())
            return false;
        if (token == QXmlStreamReader::StartElement &&
            (++elements > mostElements || !isHarmless(reader.name())))
            return false;
    }
    return !reader.hasError() && elements > 0;
}

} // namespace swabby
