#pragma once

#include "flows/cleanup/CleanupFlow.h"
#include "ui/presentation/CleanupText.h"
#include "ui/qmltypes/WindowContext.h"

#include <QtCore/QObject>
#include <QtQml/qqmlregistration.h>

namespace swabby {

class MainWindowCoordinator;

/// What the last removal did, while that is news, what stayed, until it is read, and the way back.
class RemovalBannerView : public QObject {
    Q_OBJECT
    QML_ELEMENT
    QML_UNCREATABLE("made with the window")
    Q_PROPERTY(bool isRemoving READ isRemoving NOTIFY changed)
    Q_PROPERTY(QString text READ text NOTIFY changed)
    Q_PROPERTY(bool canPutBack READ canPutBack NOTIFY changed)

public:
    RemovalBannerView(const UserInterfaceContext &context, MainWindowCoordinator &coordinator,
                      QObject *parent);

    bool isRemoving() const { return m_context.state.isRemoving(); }
    /// What goes on or was done; empty when there is no news.
    QString text() const { return removalText(m_context.state.isRemoving(), m_context.state.lastCleanup()); }
    bool canPutBack() const { return m_context.cleanup.canPutBack(); }
    Q_INVOKABLE void putBack();

Q_SIGNALS:
    void changed();

private:
    UserInterfaceContext m_context;
    MainWindowCoordinator &m_coordinator;
    bool m_asked = false; ///< for the way back, here
};

} // namespace swabby
