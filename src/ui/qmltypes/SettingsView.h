#pragma once

#include "ui/UserInterface.h"

#include <QtCore/QObject>
#include <QtQml/qqmlregistration.h>

namespace swabby {

/// The preferences, the key and the exclude list.
class SettingsView : public QObject {
    Q_OBJECT
    QML_ELEMENT
    QML_UNCREATABLE("made with the window")

public:
    explicit SettingsView(const UserInterfaceContext &context, QObject *parent = nullptr);

private:
    UserInterfaceContext m_context;
};

} // namespace swabby
