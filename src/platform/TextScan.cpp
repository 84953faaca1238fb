#include "platform/TextScan.h"

#include <QtCore/QByteArray>

#include <cmath>

namespace swabby {

std::vector<std::string_view> piecesOf(std::string_view line, char separator)
{
    std::vector<std::string_view> pieces;
    pieces.reserve(8);
    std::size_t begin = line.find_first_not_of(separator);
    while (begin != std::string_view::npos) {
        const std::size_t end = std::min(line.find(separator, begin), line.size());
        pieces.push_back(line.substr(begin, end - begin));
        begin = line.find_first_not_of(separator, end);
    }
    return pieces;
}

std::optional<double> numberOf(std::string_view piece)
{
    bool parsed = false;
    const double number =
        QByteArray::fromRawData(piece.data(), static_cast<qsizetype>(piece.size())).toDouble(&parsed);
    if (!parsed || !std::isfinite(number))
        return std::nullopt;
    return number;
}

std::string_view trimmed(std::string_view text)
{
    constexpr std::string_view blanks = " \t\r\n\v\f";
    const std::size_t begin = text.find_first_not_of(blanks);
    if (begin == std::string_view::npos)
        return {};
    return text.substr(begin, text.find_last_not_of(blanks) - begin + 1);
}

} // namespace swabby
