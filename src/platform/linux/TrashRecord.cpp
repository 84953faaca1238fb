#include "platform/linux/TrashRecord.h"

#include "platform/linux/KernelFile.h"

#include <cmath>
#include <ctime>

namespace swabby {
namespace {

constexpr std::string_view group = "[Trash Info]";
constexpr std::string_view pathKey = "Path=";

/// What RFC 2396 leaves as it is, and the slash between the parts of a path. Not a question of the locale.
bool isKept(char byte)
{
    const bool isLetter = (byte >= 'a' && byte <= 'z') || (byte >= 'A' && byte <= 'Z');
    return isLetter || (byte >= '0' && byte <= '9') ||
           std::string_view("-_.!~*'()/").find(byte) != std::string_view::npos;
}

std::string escaped(const std::string &bytes)
{
    constexpr std::string_view digits = "0123456789ABCDEF";
    std::string text;
    for (const char byte : bytes) {
        if (isKept(byte)) {
            text += byte;
            continue;
        }
        const auto value = static_cast<unsigned char>(byte);
        text += {'%', digits[value >> 4U], digits[value & 15U]};
    }
    return text;
}

int digitValue(char digit)
{
    if (digit >= '0' && digit <= '9')
        return digit - '0';
    const char letter = static_cast<char>(digit | 0x20);
    return letter >= 'a' && letter <= 'f' ? letter - 'a' + 10 : -1;
}

std::optional<std::string> unescaped(std::string_view text)
{
    std::string bytes;
    for (std::size_t at = 0; at < text.size(); ++at) {
        if (text[at] != '%') {
            bytes += text[at];
            continue;
        }
        const int high = at + 3 <= text.size() ? digitValue(text[at + 1]) : -1;
        const int low = at + 3 <= text.size() ? digitValue(text[at + 2]) : -1;
        if (high < 0 || low < 0 || high + low == 0)
            return std::nullopt;
        bytes += static_cast<char>(high * 16 + low);
        at += 2;
    }
    return bytes;
}

} // namespace

std::string trashRecordText(const std::string &path, double now)
{
    const auto seconds = static_cast<std::time_t>(std::floor(now));
    std::tm local = {};
    ::localtime_r(&seconds, &local);
    char date[32] = "";
    std::strftime(date, sizeof date, "%Y-%m-%dT%H:%M:%S", &local);
    std::string text(group);
    return text.append("\n").append(pathKey) + escaped(path) + "\nDeletionDate=" + date + '\n';
}

std::optional<std::string> pathOfTrashRecord(std::string_view text)
{
    if (nextLine(text) != group)
        return std::nullopt;
    while (const auto line = nextLine(text))
        if (line->starts_with(pathKey))
            return unescaped(line->substr(pathKey.size()));
    return std::nullopt;
}

} // namespace swabby
