#include "platform/mactools/PsText.h"

#include "platform/TextScan.h"
#include "platform/Utf8.h"

#include <QtCore/QStringList>

namespace swabby {
namespace {

constexpr std::uint64_t bytesPerKibibyte = 1024;

// Any run of blanks inside a command becomes one.
QString joined(const std::vector<std::string_view> &pieces, std::size_t first)
{
    std::string command;
    for (std::size_t i = first; i < pieces.size(); ++i) {
        if (i > first)
            command += ' ';
        command += pieces[i];
    }
    return textOf(command);
}

std::optional<std::uint64_t> bytesOf(std::string_view kibibytes)
{
    const auto count = integerOf<std::uint64_t>(kibibytes);
    std::uint64_t bytes = 0;
    if (!count || __builtin_mul_overflow(*count, bytesPerKibibyte, &bytes))
        return std::nullopt;
    return bytes;
}

/// By its place too: a program from elsewhere may have the same name.
bool holdsSession(const QString &command)
{
    static const QStringList names = {QStringLiteral("WindowServer"), QStringLiteral("loginwindow"),
                                      QStringLiteral("Finder"), QStringLiteral("Dock"),
                                      QStringLiteral("SystemUIServer")};
    return command.startsWith(QLatin1String("/System/Library/")) && names.contains(nameOfCommand(command));
}

std::optional<ProcessRow> parseRow(std::string_view line)
{
    const std::vector<std::string_view> pieces = piecesOf(line);
    if (pieces.size() < 6)
        return std::nullopt;
    const auto pid = integerOf<std::int32_t>(pieces[0]);
    const auto parentPid = integerOf<std::int32_t>(pieces[1]);
    const auto cpuPercent = numberOf(pieces[2]);
    const auto memPercent = numberOf(pieces[3]);
    const auto residentBytes = bytesOf(pieces[4]);
    if (!pid || !parentPid || !cpuPercent || !memPercent || !residentBytes)
        return std::nullopt;
    const QString command = joined(pieces, 5);
    return ProcessRow{.pid = *pid,
                      .parentPid = *parentPid,
                      .cpuPercent = *cpuPercent,
                      .memPercent = *memPercent,
                      .residentBytes = *residentBytes,
                      .path = command,
                      .name = nameOfCommand(command),
                      .isApp = command.contains(QLatin1String(".app/Contents/MacOS/")),
                      .holdsSession = holdsSession(command)};
}

} // namespace

std::vector<ProcessRow> parseProcessRows(std::string_view text, int maxLines)
{
    std::vector<ProcessRow> rows;
    forEachLine(text, [&, linesLeft = maxLines](std::string_view line) mutable {
        if (linesLeft-- == 0)
            return false;
        if (auto row = parseRow(line))
            rows.push_back(std::move(*row));
        return true;
    });
    return rows;
}

std::vector<ProcessRow> parseMatchingRows(std::string_view text, const std::unordered_set<std::int32_t> &pids)
{
    std::vector<ProcessRow> rows;
    std::unordered_set<std::int32_t> wanted = pids;
    forEachLine(text, [&, isHeader = true](std::string_view line) mutable {
        if (std::exchange(isHeader, false))
            return true;
        const auto pid = integerOf<std::int32_t>(trimmed(line).substr(0, trimmed(line).find(' ')));
        if (!pid || !wanted.contains(*pid))
            return true;
        if (auto row = parseRow(line)) {
            wanted.erase(row->pid);
            rows.push_back(std::move(*row));
        }
        return true;
    });
    return rows;
}

std::vector<ProcessWeight> parseWeights(std::string_view text)
{
    std::vector<ProcessWeight> weights;
    forEachLine(text, [&](std::string_view line) {
        const std::vector<std::string_view> pieces = piecesOf(line);
        if (pieces.size() < 3)
            return true;
        const auto cpuPercent = numberOf(pieces[0]);
        const auto residentBytes = bytesOf(pieces[1]);
        if (cpuPercent && residentBytes)
            weights.push_back({nameOfCommand(joined(pieces, 2)), *cpuPercent, *residentBytes});
        return true;
    });
    return weights;
}

QString nameOfCommand(const QString &command)
{
    qsizetype end = command.size();
    while (end > 0 && command[end - 1] == QLatin1Char('/'))
        --end;
    const QString name = command.left(end).mid(command.left(end).lastIndexOf(QLatin1Char('/')) + 1);
    return name.isEmpty() ? command : name;
}

} // namespace swabby
