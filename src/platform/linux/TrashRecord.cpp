#include "platform/linux/TrashRecord.h"

#include "platform/linux/KernelFile.h"

#include <QtCore/QByteArray>
#include <charconv>
#include <cmath>
#include <ctime>

namespace swabby {
namespace {

constexpr std::string_view group = "[Trash Info]";
constexpr std::string_view pathKey = "Path=";

/// What RFC 2396 leaves as it is beside letters, digits and "-._~", and the slash between the parts of a
/// path.
constexpr auto keptMarks = "!*'()/";

/// No value when an escape is broken or stands for the byte that ends texts.
std::optional<std::string> unescaped(std::string_view text)
{
    for (std::size_t at = text.find('%'); at != std::string_view::npos; at = text.find('%', at + 3)) {
        const std::string_view digits = text.substr(at + 1, 2);
        unsigned value = 0;
        const auto end = std::from_chars(digits.data(), digits.data() + digits.size(), value, 16).ptr;
        if (digits.size() < 2 || end != digits.data() + 2 || value == 0)
            return std::nullopt;
    }
    return QByteArray(text.data(), static_cast<qsizetype>(text.size())).percentDecoded().toStdString();
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
    return text.append("\n").append(pathKey) +
           QByteArray::fromStdString(path).toPercentEncoding(keptMarks).toStdString() +
           "\nDeletionDate=" + date + '\n';
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
