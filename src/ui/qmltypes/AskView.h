#pragma once

#include "ui/UserInterface.h"

#include <QtCore/QObject>
#include <QtQml/qqmlregistration.h>

namespace swabby {

/// The card that answers questions about the machine.
class AskView : public QObject {
    Q_OBJECT
    QML_ELEMENT
    QML_UNCREATABLE("made with the window")

public:
    explicit AskView(const UserInterfaceContext &context, QObject *parent = nullptr);

private:
    UserInterfaceContext m_context;
};

} // namespace swabby
