import QtQuick
import Swabby.Ui

// What is missing for want of a permission, with the way to where it is given.
NoticeBar {
    id: row

    required property permissionRequest request

    signal wanted(what: int)

    text: request.refusal
    offer: request.button
    canBeDismissed: false
    onAccepted: wanted(request.what)
}
