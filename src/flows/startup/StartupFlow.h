#pragma once

#include "platform/BackgroundWork.h"
#include "platform/LatestRun.h"
#include "startup/LoginItem.h"
#include "state/AppState.h"

#include <QtCore/QObject>
#include <QtCore/QStringList>

namespace swabby {

enum class StartupChange { turnOff, turnOn };

/// Changes and shows startup items off the main thread, and keeps the published list in step. Main thread.
class StartupFlow : public QObject {
    Q_OBJECT

public:
    explicit StartupFlow(AppState &state);

    // Nothing happens for an item that is being changed.
    /// Turns an item off and takes it off the published list.
    void disable(const LoginItem &item) { change(item, StartupChange::turnOff); }
    /// Turns an item of disabledItems() on again; the next refresh lists it.
    void enable(const LoginItem &item) { change(item, StartupChange::turnOn); }
    /// The items that are being changed.
    const QStringList &busyIds() const { return m_busyIds; }
    /// Looks again for what was turned off.
    void lookForDisabled();
    /// Looks again at everything: whether Swabby itself starts was changed elsewhere.
    void noteLoginSetting();
    /// What was turned off, as of the last look.
    const QList<LoginItem> &disabledItems() const { return m_disabledItems; }
    void reveal(const QString &path);
    void openLoginItemSettings();

Q_SIGNALS:
    void busyChanged();
    /// The item of that label could not be turned off or on.
    void failed(swabby::StartupChange change, const QString &label);
    void disabledItemsChanged();
    /// The desktop had nothing to show the file with, or the system's settings for an empty path.
    void nothingOpened(const QString &path);

private:
    void change(const LoginItem &item, StartupChange change);
    void open(const QString &path);

    AppState &m_state;
    QStringList m_busyIds;
    QList<LoginItem> m_disabledItems;
    // Last, so that the work is waited for while everything it uses still stands.
    BackgroundWork m_work;
    LatestRun m_looks;
    LatestRun m_actions;
};

} // namespace swabby
