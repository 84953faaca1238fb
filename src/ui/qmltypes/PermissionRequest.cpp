#include "ui/qmltypes/PermissionRequest.h"

#include "platform/BackgroundWork.h"
#include "platform/WhenDone.h"
#include "state/AppState.h"
#include "ui/presentation/NoticeText.h"

namespace swabby {

PermissionRequest::PermissionRequest(Permission permission, const Permissions::Refused &refused,
                                     const MachineWords &words)
    : what(static_cast<int>(permission))
{
    const auto row = static_cast<std::size_t>(permission);
    if (!refused.contains(permission) || row >= words.permissions.size())
        return;
    refusal = words.permissions[row].refusal;
    button = words.permissions[row].button;
}

void openPermissionSettings(int what, const UserInterfaceContext &context, QObject *owner,
                            std::function<void(const QString &notice)> failed)
{
    const auto opening = context.systemCalls.ask([machine = context.state.sharedMachine(), what] {
        return machine->workspace->openPermissionSettings(static_cast<Permission>(what));
    });
    whenDone(owner, opening, [failed = std::move(failed)](bool isOpened) {
        if (!isOpened)
            failed(noticeText(Notice::nothingToShowWith, QStringLiteral("the system's settings")));
    });
}

} // namespace swabby
