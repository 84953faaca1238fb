#include "cli/StateText.h"

#include "cli/Output.h"
#include "engine/ByteCount.h"
#include "engine/TimeText.h"
#include "engine/WholeNumber.h"
#include "health/HealthRules.h"

#include <QtCore/QDateTime>

namespace swabby {
namespace {

QString heading(const QString &text)
{
    return QLatin1Char('\n') + inBold(text) + QLatin1Char('\n');
}

QString heatWord(ThermalState state)
{
    switch (state) {
    case ThermalState::nominal:
        return QStringLiteral("normal");
    case ThermalState::fair:
        return QStringLiteral("slightly warm");
    case ThermalState::serious:
        return QStringLiteral("running hot");
    case ThermalState::critical:
        return QStringLiteral("overheating");
    }
    return {};
}

QString batteryText(const SystemStats &stats)
{
    QString text = QStringLiteral("%1%%2")
                       .arg(*stats.batteryPercent)
                       .arg(stats.isCharging ? QStringLiteral(", charging") : QString());
    if (stats.timeRemainingMinutes)
        text += QStringLiteral(" · %1h %2m")
                    .arg(*stats.timeRemainingMinutes / 60)
                    .arg(*stats.timeRemainingMinutes % 60);
    if (stats.batteryHealthPercent)
        text += QStringLiteral(" · health %1%").arg(*stats.batteryHealthPercent);
    if (stats.batteryCycleCount)
        text += QStringLiteral(" · %1 cycles").arg(*stats.batteryCycleCount);
    return text;
}

QString gaugesText(const SystemStats &stats)
{
    std::vector<QStringList> rows = {
        {QStringLiteral("Speed"), percentText(stats.cpuUsagePercent) + QStringLiteral(" busy")},
        {QStringLiteral("Memory"), memoryByteCount(stats.memUsedBytes) + QStringLiteral(" / ") +
                                       memoryByteCount(stats.memTotalBytes) + QStringLiteral(" · swap ") +
                                       memoryByteCount(stats.swapUsedBytes)},
        {QStringLiteral("Storage"), fileByteCount(stats.diskFreeBytes) + QStringLiteral(" free of ") +
                                        fileByteCount(stats.diskTotalBytes) + volumeText(stats)}};
    if (stats.batteryPercent)
        rows.push_back({QStringLiteral("Battery"), batteryText(stats)});
    rows.push_back({QStringLiteral("Heat"), heatWord(stats.thermalState)});
    return table(rows);
}

QString issuesText(const AppState &state)
{
    QString text;
    for (const HealthIssue &issue : state.healthIssues())
        text += QStringLiteral("  ") + inColor(QStringLiteral("▲ ") + harmless(issue.what), issue.level) +
                QStringLiteral("\n    ") + harmless(issue.why) + QStringLiteral("\n    ") +
                harmless(issue.how) + QLatin1Char('\n');
    for (const LeakSuspect &suspect : state.leakSuspects())
        text += QStringLiteral("  ") +
                inColor(QStringLiteral("▲ ") + harmless(leakHeadline(suspect)), HealthLevel::yellow) +
                QStringLiteral("\n    ") + leakDetail(suspect) + QLatin1Char('\n');
    return text;
}

QString processesText(const QList<ProcessSample> &processes, const std::set<QString> &pinned)
{
    std::vector<QStringList> rows = {{QStringLiteral("PID"), QStringLiteral("CPU"), QStringLiteral("MEMORY"),
                                      QStringLiteral("ENERGY"), QStringLiteral("TRUST"),
                                      QStringLiteral("NAME")}};
    for (const ProcessSample &process : processes)
        rows.push_back({QString::number(process.pid), percentText(process.cpuPercent),
                        memoryByteCount(process.rssBytes), QString::number(wholeNumber(process.energyImpact)),
                        QString::number(process.trustRatio()),
                        harmless(process.name) +
                            (pinned.contains(process.name) ? QStringLiteral(" (pinned)") : QString())});
    return table(rows, {0, 1, 2, 3, 4});
}

QString networkText(const QList<ProcessSample> &users)
{
    std::vector<QStringList> rows;
    for (const ProcessSample &process : users)
        rows.push_back({QString::number(process.pid),
                        fileByteCount(process.networkBytesPerSec) + QStringLiteral("/s"),
                        harmless(process.name)});
    return table(rows, {0, 1});
}

QString browsersText(const QList<BrowserRollupEntry> &browsers)
{
    std::vector<QStringList> rows;
    for (const BrowserRollupEntry &browser : browsers)
        rows.push_back({memoryByteCount(browser.totalMemBytes), percentText(browser.totalCPUPercent),
                        QStringLiteral("%1 tabs & helpers").arg(browser.processCount), browser.browserName});
    return table(rows, {0, 1});
}

} // namespace

QString stateText(const AppState &state)
{
    QString text = inColor(healthWord(state.health()), state.health()) + QStringLiteral("\n\n") +
                   gaugesText(state.stats());
    if (const QString issues = issuesText(state); !issues.isEmpty())
        text += heading(QStringLiteral("What's going on")) + issues;
    text += heading(QStringLiteral("Running apps")) + processesText(state.processes(), state.pinnedNames());
    if (!state.networkUsers().isEmpty())
        text += heading(QStringLiteral("Network")) + networkText(state.networkUsers());
    if (!state.browserRollups().isEmpty())
        text += heading(QStringLiteral("Browsers")) + browsersText(state.browserRollups());
    if (!state.loginItems().isEmpty())
        text += heading(QStringLiteral("Startup items")) + loginItemsText(state.loginItems());
    return text;
}

QString stateLine(const AppState &state)
{
    const SystemStats &stats = state.stats();
    const QDateTime time = QDateTime::fromSecsSinceEpoch(wholeNumber(stats.timestamp));
    const QLocale locale;
    const qsizetype longest = timeOfDay(QDateTime(time.date(), QTime(22, 22, 22)), locale).size();
    QString line =
        timeOfDay(time, locale).rightJustified(longest) + QStringLiteral("  ") +
        inColor(healthWord(state.health()).leftJustified(10), state.health()) +
        QStringLiteral("  %1 busy  %2 memory  %3 free")
            .arg(percentText(stats.cpuUsagePercent).rightJustified(4),
                 percentText(memoryPercent(stats)).rightJustified(4), fileByteCount(stats.diskFreeBytes)) +
        volumeText(stats);
    if (!state.healthIssues().isEmpty())
        line += QStringLiteral("  ") + harmless(state.healthIssues().first().what);
    return line + QLatin1Char('\n');
}

QString loginItemsText(const QList<LoginItem> &items)
{
    std::vector<QStringList> rows;
    for (const LoginItem &item : items) {
        QStringList marks;
        if (item.isOrphaned)
            marks.append(QStringLiteral("its program is gone"));
        if (!item.isLoaded)
            marks.append(QStringLiteral("not loaded"));
        if (item.bootDelaySeconds)
            marks.append(QStringLiteral("started %1 s after boot").arg(*item.bootDelaySeconds));
        rows.push_back({harmless(item.label), scopeText(item.scope), marks.join(QStringLiteral(", "))});
    }
    return table(rows);
}

} // namespace swabby
