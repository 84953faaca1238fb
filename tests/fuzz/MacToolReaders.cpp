#include "fuzz/Readers.h"
#include "platform/macparts/MacProcessControl.h"
#include "platform/mactools/ApplicationBundle.h"
#include "platform/mactools/HardwareReport.h"
#include "platform/mactools/IconFile.h"
#include "platform/mactools/LaunchdText.h"
#include "platform/mactools/MacBootClock.h"
#include "platform/mactools/NettopText.h"
#include "platform/mactools/PsText.h"
#include "platform/mactools/TopText.h"

#include <QtCore/QStringList>

#include <algorithm>
#include <array>
#include <cmath>

namespace swabby {
namespace {

using Text = Reader::Text;

/// No value, or a moment that a clock can show.
bool isMoment(std::optional<double> seconds)
{
    return !seconds || std::isfinite(*seconds);
}

bool isRow(const ProcessRow &row)
{
    return std::isfinite(row.cpuPercent) && std::isfinite(row.memPercent) && !row.name.isEmpty() &&
           row.path.contains(row.name);
}

bool processes(Text text)
{
    const auto rows = parseProcessRows(text, sortedListingLines);
    const auto matching = parseMatchingRows(text, {0, 1, 7, 1502});
    const auto weights = parseWeights(text);
    return rows.size() <= sortedListingLines && std::ranges::all_of(rows, isRow) && matching.size() <= 4 &&
           std::ranges::all_of(matching, isRow) &&
           std::ranges::all_of(weights, [](const auto &weight) { return std::isfinite(weight.cpuPercent); });
}

bool energy(Text text)
{
    return std::ranges::all_of(parseTop(text), [](const auto &row) { return std::isfinite(row.power); });
}

bool loginItems(Text text)
{
    return std::ranges::all_of(parseLoginItemNames(text), [](const QString &name) {
        return !name.isEmpty() && name == name.trimmed() && !name.contains(QLatin1Char(','));
    });
}

bool propertyList(Text text)
{
    parseLaunchJob(bytesOf(text));
    parseBundleIcon(bytesOf(text));
    const auto facts = parseBundleFacts(bytesOf(text));
    return !facts || !facts->identifier.isEmpty();
}

bool iconFile(Text text)
{
    return std::ranges::all_of(std::array{0, 48, 1024}, [&](int pixels) {
        const QByteArray picture = pngOfIconFile(bytesOf(text), pixels);
        return picture.isEmpty() || (text.starts_with("icns") && picture.startsWith("\x89PNG"));
    });
}

} // namespace

Readers macToolReaders()
{
    return {
        {"ps", processes},
        {"ps_lstart",
         [](Text text) {
             parseLivingStart(text);
             return isMoment(parseStartTime(text));
         }},
        {"top", energy},
        {"nettop", [](Text text) { return parseNettop(text).size() <= text.size(); }},
        {"sysctl", [](Text text) { return isMoment(parseBootTime(text)); }},
        {"system_profiler",
         [](Text text) {
             const BatteryHealth health = parseHardwareReport(text);
             return !text.empty() || (!health.cycles && !health.healthPercent);
         }},
        {"launchctl", [](Text text) { return parseLoadedJob(text).isLoaded || !parseLoadedJob(text).pid; }},
        {"codesign",
         [](Text text) { return !namesAppleAuthority(text) || text.find("Authority=") != Text::npos; }},
        {"osascript", loginItems},
        {"plist", propertyList},
        {"icon_file", iconFile},
    };
}

} // namespace swabby
