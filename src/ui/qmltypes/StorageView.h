#pragma once

#include "ui/UserInterface.h"

#include <QtCore/QObject>
#include <QtQml/qqmlregistration.h>

namespace swabby {

class MainWindowCoordinator;

/// Everything that can be cleaned, and the queue of what was chosen.
class StorageView : public QObject {
    Q_OBJECT
    QML_ELEMENT
    QML_UNCREATABLE("made with the window")

public:
    StorageView(const UserInterfaceContext &context, MainWindowCoordinator &coordinator,
                QObject *parent = nullptr);

private:
    UserInterfaceContext m_context;
    MainWindowCoordinator &m_coordinator;
};

} // namespace swabby
