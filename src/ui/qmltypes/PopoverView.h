#pragma once

#include "ui/UserInterface.h"

#include <QtCore/QObject>
#include <QtQml/qqmlregistration.h>

namespace swabby {

/// The small panel beside the item in the menu bar.
class PopoverView : public QObject {
    Q_OBJECT
    QML_ELEMENT
    QML_UNCREATABLE("made with the window")

public:
    explicit PopoverView(const UserInterfaceContext &context, QObject *parent = nullptr);

private:
    UserInterfaceContext m_context;
};

} // namespace swabby
