#include "flows/health/NotificationFlow.h"

#include "engine/ByteCount.h"
#include "engine/ProgramFigures.h"
#include "engine/WholeNumber.h"
#include "platform/HarmlessText.h"
#include "settings/Settings.h"

#include <QCoroFuture>

#include <QtCore/QPointer>

#include <utility>

namespace swabby {
namespace {

constexpr double weekSeconds = 604'800;
constexpr double reminderPauseSeconds = 259'200;
constexpr double bytesPerGigabyte = 1'000'000'000;

/// What happened in a week that is over.
struct Week {
    qint64 bytesFreed = 0;
    qint64 attentionCount = 0;
};

/// Begins the next week where one is over, and gives the one that is, if there is something to tell of it and
/// somebody wants to hear it. Of two programs that look at once, one tells.
std::optional<Week> finishWeek(SettingsStore &store, double now)
{
    Settings settings(store);
    const QJsonValue seen = settings.stored(setting<"lastWeeklySummaryDate">);
    const std::optional<double> begun = settings.value(setting<"lastWeeklySummaryDate">);
    if (begun && now - *begun < weekSeconds)
        return std::nullopt;
    if (!settings.replace(setting<"lastWeeklySummaryDate">, seen, now) || !begun)
        return std::nullopt;
    const Week week = {settings.value(setting<"weeklyBytesFreed">),
                       settings.value(setting<"weeklyAttentionCount">)};
    // What another program counted meanwhile stays.
    settings.add(setting<"weeklyBytesFreed">, -week.bytesFreed);
    settings.add(setting<"weeklyAttentionCount">, -week.attentionCount);
    const bool isToBeTold =
        settings.value(setting<"notifyWeekly">) && (week.bytesFreed >= 1 || week.attentionCount >= 1);
    return isToBeTold ? std::optional(week) : std::nullopt;
}

/// The stored date as seen, when a reminder's scan is due.
std::optional<QJsonValue> dueStorageCheck(SettingsStore &store, double now)
{
    const Settings settings(store);
    const QJsonValue seen = settings.stored(setting<"lastStorageNotifyCheckDate">);
    const std::optional<double> last = settings.value(setting<"lastStorageNotifyCheckDate">);
    if (!settings.value(setting<"notifyOnStorage">) || (last && now - *last < reminderPauseSeconds))
        return std::nullopt;
    return seen;
}

/// Notes that the check was done. True when the total is one to remind of and no other program does.
bool finishStorageCheck(SettingsStore &store, const QJsonValue &seen, double now, std::int64_t total)
{
    Settings settings(store);
    const std::int64_t threshold =
        wholeNumber(settings.value(setting<"storageNotifyThresholdGB">) * bytesPerGigabyte);
    return settings.replace(setting<"lastStorageNotifyCheckDate">, seen, now) && total >= threshold;
}

} // namespace

NotificationFlow::NotificationFlow(AppState &state, CloudAI &ai, StorageTotal scan)
    : m_state(state), m_ai(ai), m_scan(std::move(scan)), m_scans(1)
{
    state.machine().notifier->requestPermission();
    connect(&state, &AppState::turnedRed, this, &NotificationFlow::notify);
    connect(&state, &AppState::applied, this, [this] { followRefresh(); });
}

Notification NotificationFlow::postNotification(const QString &title, const QString &body,
                                                MainSection section)
{
    const Notification notification = {oneLine(title), oneLine(body)};
    m_state.machine().notifier->post(notification, [self = QPointer(this), section] {
        if (self)
            Q_EMIT self->opened(section);
    });
    return notification;
}

void NotificationFlow::notify(const QList<ProcessSample> &healthInput)
{
    if (healthInput.isEmpty() || isSnoozed() ||
        !Settings(*m_state.machine().settings).value(setting<"notifyOnRed">))
        return;
    const ProcessSample &hog = healthInput.first();
    const MachineWords &words = m_state.machine().words;
    m_alarms.append(postNotification(QStringLiteral("Your %1 could use some attention").arg(words.computer),
                                     hog.name + QStringLiteral(" is ") + powerText(hog.cpuPercent, words) +
                                         QStringLiteral(" right now."),
                                     MainSection::speed));
}

QCoro::Task<> NotificationFlow::followRefresh()
{
    const StopToken stop = m_checks.join();
    QList<Notification> posted = std::exchange(m_alarms, {});
    const auto weekly = checkWeeklySummary();
    const auto storage = checkStorageCleanupNotification();
    const std::optional<Notification> summary = co_await weekly;
    const std::optional<Notification> reminder = co_await storage;
    for (const auto &notification : {summary, reminder})
        if (notification)
            posted.append(*notification);
    if (!stop.stopRequested())
        Q_EMIT settled(posted);
}

QCoro::Task<std::optional<Notification>> NotificationFlow::checkWeeklySummary()
{
    const StopToken stop = m_checks.join();
    const auto check = m_state.bookkeeping().ask([machine = m_state.sharedMachine()] {
        return finishWeek(*machine->settings, machine->clock->now());
    });
    const std::optional<Week> week = co_await check;
    if (stop.stopRequested() || !week)
        co_return std::nullopt;
    // GCC 12 destroys a temporary of a conditional twice when it stands in what is awaited.
    const QString freedText = week->bytesFreed >= 1 ? fileByteCount(week->bytesFreed) : QString();
    co_return co_await sendWeeklySummary(freedText, week->attentionCount);
}

QCoro::Task<std::optional<Notification>> NotificationFlow::sendWeeklySummary(QString freedText,
                                                                             qint64 attentionCount)
{
    const StopToken stop = m_checks.join();
    const auto sentence = co_await m_ai.weeklySummary(freedText, attentionCount);
    if (stop.stopRequested())
        co_return std::nullopt;
    co_return postNotification(
        QStringLiteral("Your weekly %1 check-up").arg(m_state.machine().words.computer), sentence.value,
        MainSection::overview);
}

QCoro::Task<std::optional<Notification>> NotificationFlow::checkStorageCleanupNotification()
{
    if (!m_scan || m_storageCheck.isUnderWay() || isSnoozed())
        co_return std::nullopt;
    const ScanControl control = m_storageCheck.begin();
    const auto machine = m_state.sharedMachine();
    const auto check = m_state.bookkeeping().ask(
        [machine] { return dueStorageCheck(*machine->settings, machine->clock->now()); });
    const std::optional<QJsonValue> seen = co_await check;
    bool isWorthIt = false;
    std::optional<std::int64_t> total;
    if (!control.stop.stopRequested() && seen) {
        const auto scanning = m_scans.ask([scan = m_scan, control] { return scan(control); });
        total = co_await scanning;
        if (control.stop.stopRequested())
            co_return std::nullopt;
    }
    if (total) {
        const auto finishing = m_state.bookkeeping().ask([machine, seen, total] {
            return finishStorageCheck(*machine->settings, *seen, machine->clock->now(), *total);
        });
        isWorthIt = co_await finishing;
    }
    if (control.stop.stopRequested())
        co_return std::nullopt;
    m_storageCheck.end();
    if (!isWorthIt)
        co_return std::nullopt;
    co_return postNotification(QStringLiteral("Your %1 could use a cleanup").arg(machine->words.computer),
                               QStringLiteral("You could free up about ") + fileByteCount(*total) +
                                   QStringLiteral(" of space. Open Swabby's Storage tab to clean up."),
                               MainSection::storage);
}

bool NotificationFlow::isSnoozed() const
{
    return m_state.snoozedUntil() && *m_state.snoozedUntil() > m_state.machine().clock->now();
}

} // namespace swabby
