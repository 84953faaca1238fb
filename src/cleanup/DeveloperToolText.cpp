#include "cleanup/DeveloperToolText.h"

#include "engine/WholeNumber.h"
#include "platform/TextScan.h"
#include "platform/Utf8.h"

#include <QtCore/QDateTime>
#include <QtCore/QJsonDocument>
#include <QtCore/QJsonObject>
#include <QtCore/QTimeZone>

#include <algorithm>
#include <limits>

namespace swabby {
namespace {

/// A number of exactly so many digits at this place of the text; -1 when there is something else.
int digitsAt(const QString &text, qsizetype begin, qsizetype count)
{
    int number = 0;
    for (qsizetype index = begin; index < begin + count; ++index) {
        const ushort letter = index < text.size() ? text.at(index).unicode() : 0;
        if (letter < '0' || letter > '9')
            return -1;
        number = number * 10 + (letter - '0');
    }
    return number;
}

/// The offset in seconds that "Z" or "+05:30" says.
std::optional<int> offsetOf(const QString &zone)
{
    if (zone == QLatin1String("Z"))
        return 0;
    const int hours = digitsAt(zone, 1, 2);
    const int minutes = digitsAt(zone, 4, 2);
    const bool isSigned = zone.startsWith(QLatin1Char('+')) || zone.startsWith(QLatin1Char('-'));
    if (zone.size() != 6 || !isSigned || zone.at(3) != QLatin1Char(':') || hours < 0 || hours > 23 ||
        minutes < 0 || minutes > 59)
        return std::nullopt;
    const int seconds = (hours * 60 + minutes) * 60;
    return zone.startsWith(QLatin1Char('-')) ? -seconds : seconds;
}

QString platformOf(const QString &runtimeIdentifier)
{
    for (const auto &[mark, platform] :
         {std::pair{"xrOS", "visionOS"}, std::pair{"watchOS", "watchOS"}, std::pair{"tvOS", "tvOS"}})
        if (runtimeIdentifier.contains(QLatin1String(mark)))
            return QLatin1String(platform);
    return QStringLiteral("iOS");
}

std::optional<std::int64_t> wholeNumberOf(const QJsonValue &value)
{
    // Only what is no whole number of this size gives the value asked for in its place.
    if (value.toInteger(0) != value.toInteger(1))
        return std::nullopt;
    return value.toInteger();
}

std::optional<SimulatorRuntimeInfo> runtimeFrom(const QJsonValue &value, double now)
{
    constexpr double secondsOfADay = 86'400;
    const QJsonObject record = value.toObject();
    const QJsonValue identifier = record.value(QLatin1String("identifier"));
    const QJsonValue runtimeIdentifier = record.value(QLatin1String("runtimeIdentifier"));
    const QJsonValue version = record.value(QLatin1String("version"));
    const QJsonValue lastUsed = record.value(QLatin1String("lastUsedAt"));
    const auto size = wholeNumberOf(record.value(QLatin1String("sizeBytes")));
    if (!identifier.isString() || !runtimeIdentifier.isString() || !version.isString() || !size ||
        !(lastUsed.isString() || lastUsed.isNull() || lastUsed.isUndefined()))
        return std::nullopt;

    SimulatorRuntimeInfo runtime = {.identifier = identifier.toString(),
                                    .name = platformOf(runtimeIdentifier.toString()) + QLatin1Char(' ') +
                                            version.toString(),
                                    .sizeBytes = *size,
                                    .daysSinceUsed = std::nullopt};
    if (const auto used = parseIsoTime(lastUsed.toString()))
        runtime.daysSinceUsed = wholeNumber((now - static_cast<double>(*used)) / secondsOfADay);
    return runtime;
}

} // namespace

std::optional<std::int64_t> parseIsoTime(const QString &text)
{
    constexpr qsizetype zoneBegin = 19; // after yyyy-MM-ddTHH:mm:ss
    const bool isSpaced = text.size() > zoneBegin && text.at(4) == QLatin1Char('-') &&
                          text.at(7) == QLatin1Char('-') && text.at(10) == QLatin1Char('T') &&
                          text.at(13) == QLatin1Char(':') && text.at(16) == QLatin1Char(':');
    if (!isSpaced)
        return std::nullopt;
    const int year = digitsAt(text, 0, 4); // there are dates of negative years
    const QDate date(year, digitsAt(text, 5, 2), digitsAt(text, 8, 2));
    const QTime time(digitsAt(text, 11, 2), digitsAt(text, 14, 2), digitsAt(text, 17, 2));
    const std::optional<int> offset = offsetOf(text.mid(zoneBegin));
    if (year < 0 || !date.isValid() || !time.isValid() || !offset)
        return std::nullopt;
    return QDateTime(date, time, QTimeZone::utc()).toSecsSinceEpoch() - *offset;
}

std::vector<SimulatorRuntimeInfo> parseSimulatorRuntimes(const QByteArray &json, double now)
{
    std::vector<SimulatorRuntimeInfo> runtimes;
    for (const QJsonValue value : QJsonDocument::fromJson(json).object()) {
        std::optional<SimulatorRuntimeInfo> runtime = runtimeFrom(value, now);
        if (!runtime)
            return {};
        runtimes.push_back(std::move(*runtime));
    }
    std::stable_sort(runtimes.begin(), runtimes.end(), [](const auto &left, const auto &right) {
        return left.daysSinceUsed.value_or(0) > right.daysSinceUsed.value_or(0);
    });
    return runtimes;
}

std::vector<DockerRow> parseDockerUsage(std::string_view text)
{
    std::vector<DockerRow> rows;
    if (text.find("Cannot connect") != std::string_view::npos)
        return rows;
    forEachLine(trimmed(text), [&](std::string_view line) {
        while (line.ends_with('\r'))
            line.remove_suffix(1);
        const std::size_t tab = line.find('\t');
        if (tab == std::string_view::npos)
            return true;
        const std::string_view rest = line.substr(tab + 1);
        rows.push_back({textOf(line.substr(0, tab)), textOf(rest.substr(0, rest.find('\t')))});
        return true;
    });
    return rows;
}

std::int64_t parseByteString(std::string_view text)
{
    text = trimmed(text.substr(0, text.find('(')));
    const std::size_t numberEnd = std::min(text.find_first_not_of("0123456789."), text.size());
    const std::optional<double> number = numberOf(text.substr(0, numberEnd));
    if (!number)
        return 0;
    const QString unit = textOf(trimmed(text.substr(numberEnd))).toUpper();
    double factor = 1;
    for (const auto &[name, bytes] :
         {std::pair{"KB", 1e3}, std::pair{"MB", 1e6}, std::pair{"GB", 1e9}, std::pair{"TB", 1e12}})
        if (unit == QLatin1String(name))
            factor = bytes;
    const double product = *number * factor;
    constexpr auto most = std::numeric_limits<std::int64_t>::max();
    return product < static_cast<double>(most) ? static_cast<std::int64_t>(product) : most;
}

} // namespace swabby
