#pragma once

#include <charconv>
#include <concepts>
#include <optional>
#include <string_view>
#include <vector>

namespace swabby {

/// The pieces between runs of the separator, none of them empty.
std::vector<std::string_view> piecesOf(std::string_view line, char separator = ' ');

/// Walks the lines of a text that are not empty. Stops when use() returns false.
template <typename Use>
void forEachLine(std::string_view text, Use use)
{
    while (!text.empty()) {
        const std::size_t end = text.find('\n');
        const std::string_view line = text.substr(0, end);
        text.remove_prefix(end == std::string_view::npos ? text.size() : end + 1);
        if (!line.empty() && !use(line))
            return;
    }
}

/// The whole piece as a decimal integer; no value when it is anything else or does not fit.
template <std::integral Number>
std::optional<Number> integerOf(std::string_view piece)
{
    Number number = 0;
    const auto [end, problem] = std::from_chars(piece.data(), piece.data() + piece.size(), number);
    if (problem != std::errc() || end != piece.data() + piece.size())
        return std::nullopt;
    return number;
}

/// The whole piece as a finite decimal number with a point; no value when it is anything else.
std::optional<double> numberOf(std::string_view piece);

/// Without blanks, tabs and line ends at both ends.
std::string_view trimmed(std::string_view text);

} // namespace swabby
