#pragma once

#include "platform/MachineWords.h"
#include "platform/Permissions.h"
#include "ui/qmltypes/WindowContext.h"

#include <QtCore/QObject>
#include <QtQmlIntegration/qqmlintegration.h>

namespace swabby {

/// What is missing from a page for want of a permission, and the button that opens where it is given.
struct PermissionRequest {
    Q_GADGET
    QML_VALUE_TYPE(permissionRequest)
    Q_PROPERTY(int what MEMBER what)
    Q_PROPERTY(QString refusal MEMBER refusal)
    Q_PROPERTY(QString button MEMBER button)

public:
    PermissionRequest() = default;
    PermissionRequest(Permission permission, const Permissions::Refused &refused, const MachineWords &words);

    int what = 0;
    QString refusal; ///< empty while nothing is
    QString button;
};

/// Opens the system's settings there, beside the main thread; calls on it when there are none to open, while
/// the owner lasts.
void openPermissionSettings(int what, const UserInterfaceContext &context, QObject *owner,
                            std::function<void(const QString &notice)> failed);

} // namespace swabby
