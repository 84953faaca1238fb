#pragma once

#include "ai/CloudAI.h"
#include "health/MainSection.h"
#include "platform/LatestRun.h"
#include "platform/Notifier.h"
#include "platform/ScanControl.h"
#include "state/AppState.h"

#include <QtCore/QList>
#include <QtCore/QObject>

#include <functional>
#include <optional>

namespace swabby {

/// The bytes that a cleanup could free; no value when that cannot be told now. Blocks for as long as it
/// looks.
using StorageTotal = std::function<std::optional<std::int64_t>(const ScanControl &control)>;

/// Tells the person without being asked: that the health has just turned red, that a lot could be cleaned,
/// and once a week how it went. Follows every refresh of the state, which it listens to. Main thread.
class NotificationFlow : public QObject {
    Q_OBJECT

public:
    /// Without a scan there are no storage reminders, and no date is noted for them.
    NotificationFlow(AppState &state, CloudAI &ai, StorageTotal scan = {});

    /// Posts a notification now, and gives it; opening it leads to the section.
    Notification postNotification(const QString &title, const QString &body, MainSection section);

Q_SIGNALS:
    /// Everything that one refresh started here has finished, with what it posted; once for each refresh.
    void settled(const QList<swabby::Notification> &posted);
    /// The person opened a notification about that section.
    void opened(swabby::MainSection section);

private:
    void notify(const QList<ProcessSample> &healthInput);
    QCoro::Task<> followRefresh();
    // What was posted, if anything was.
    QCoro::Task<std::optional<Notification>> checkWeeklySummary();
    QCoro::Task<std::optional<Notification>> sendWeeklySummary(QString freedText, qint64 attentionCount);
    QCoro::Task<std::optional<Notification>> checkStorageCleanupNotification();
    bool isSnoozed() const;

    AppState &m_state;
    CloudAI &m_ai;
    const StorageTotal m_scan;
    QList<Notification> m_alarms; ///< posted by the refresh that is being applied
    // Last, so that a scan is told to stop, then waited for while everything it uses still stands.
    BackgroundWork m_scans;
    LatestRun m_storageCheck;
    LatestRun m_checks;
};

} // namespace swabby
