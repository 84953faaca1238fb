#pragma once

#include "ui/UserInterface.h"

#include <QtCore/QObject>
#include <QtQml/qqmlregistration.h>

namespace swabby {

class MainWindowCoordinator;

/// One full check, as its page shows it.
class CheckView : public QObject {
    Q_OBJECT
    QML_ELEMENT
    QML_UNCREATABLE("made with the window")

public:
    CheckView(const UserInterfaceContext &context, MainWindowCoordinator &coordinator,
              QObject *parent = nullptr);

    /// Begins a check; one that still runs begins anew.
    Q_INVOKABLE void run();

private:
    UserInterfaceContext m_context;
    MainWindowCoordinator &m_coordinator;
};

} // namespace swabby
