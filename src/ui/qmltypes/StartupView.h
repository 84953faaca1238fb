#pragma once

#include "flows/startup/StartupFlow.h"
#include "ui/qmltypes/RowModel.h"
#include "ui/qmltypes/WindowContext.h"

#include <QtCore/QObject>
#include <QtCore/QStringList>
#include <QtQml/qqmlregistration.h>

namespace swabby {

class MainWindowCoordinator;

/// What can be done to startup items.
class StartupView : public QObject {
    Q_OBJECT
    QML_ELEMENT
    QML_UNCREATABLE("made with the window")
    Q_PROPERTY(swabby::RowModel *disabled READ disabled CONSTANT)
    Q_PROPERTY(QString systemWideItems READ systemWideItems CONSTANT)
    Q_PROPERTY(QStringList busyIds READ busyIds NOTIFY busyChanged)

public:
    StartupView(const UserInterfaceContext &context, MainWindowCoordinator &coordinator, QObject *parent);

    /// What was turned off here.
    RowModel *disabled() { return &m_disabled; }
    /// How those are changed that are not changed here.
    QString systemWideItems() const { return m_context.state.machine().words.systemWideItems; }
    /// The items that are being changed.
    QStringList busyIds() const;

    Q_INVOKABLE void explain(const QString &id);
    Q_INVOKABLE void disable(const QString &id);
    Q_INVOKABLE void enable(const QString &id);
    /// What the menu of that item's row says.
    Q_INVOKABLE void follow(int command, const QString &id);
    Q_INVOKABLE void openSettings() { m_context.startup.openLoginItemSettings(); }
    /// Looks again for what was turned off.
    Q_INVOKABLE void look() { m_context.startup.lookForDisabled(); }

Q_SIGNALS:
    void busyChanged();

private:
    const LoginItem *find(const QString &id) const;
    void showDisabled();

    UserInterfaceContext m_context;
    MainWindowCoordinator &m_coordinator;
    RowModel m_disabled{this};
};

} // namespace swabby
