#pragma once

#include "ui/UserInterface.h"

#include <QtCore/QObject>
#include <QtQml/qqmlregistration.h>

namespace swabby {

class MainWindowCoordinator;

/// What developers' tools have piled up.
class DeveloperView : public QObject {
    Q_OBJECT
    QML_ELEMENT
    QML_UNCREATABLE("made with the window")

public:
    DeveloperView(const UserInterfaceContext &context, MainWindowCoordinator &coordinator,
                  QObject *parent = nullptr);

private:
    UserInterfaceContext m_context;
    MainWindowCoordinator &m_coordinator;
};

} // namespace swabby
