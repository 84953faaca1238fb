#pragma once

#include "platform/BackgroundWork.h"
#include "startup/LoginItem.h"
#include "state/AppState.h"

#include <QCoroTask>

#include <QtCore/QObject>

namespace swabby {

/// Changes and shows startup items off the main thread, and keeps the published list in step. Main thread.
class StartupFlow : public QObject {
    Q_OBJECT

public:
    explicit StartupFlow(AppState &state);

    /// Turns an item off and takes it off the published list.
    void disable(const LoginItem &item);
    /// Turns an item of disabledItems() on again; the next refresh lists it.
    void enable(const LoginItem &item);
    /// Looks again for what was turned off.
    void lookForDisabled();
    /// What was turned off, as of the last look.
    const QList<LoginItem> &disabledItems() const { return m_disabledItems; }
    void reveal(const QString &path);
    void openLoginItemSettings();

Q_SIGNALS:
    /// An item was turned off or on, or could not be.
    void changed(const QString &id, bool isDone);
    void disabledItemsChanged();
    /// The desktop had nothing to show the file or the settings with.
    void nothingOpened();

private:
    QCoro::Task<> change(LoginItem item, bool (*act)(const LoginItem &, StartupControl &));
    QCoro::Task<> look();
    QCoro::Task<> open(QString path);

    AppState &m_state;
    int m_looks = 0; ///< for disabled items, so far
    QList<LoginItem> m_disabledItems;
    BackgroundWork m_work;
};

} // namespace swabby
