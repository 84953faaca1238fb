import QtQuick
import Swabby.Ui

// The way back from the last removal, once its banner is gone.
Item {
    id: row

    required property RemovalBannerView removal
    property bool isWanted: true

    implicitHeight: 24
    visible: isWanted && removal.canPutBack && removal.text === ""

    Remark {
        anchors.left: parent.left
        anchors.right: button.left
        anchors.rightMargin: 12
        anchors.verticalCenter: parent.verticalCenter
        text: Words.stillInTrash
    }

    ActionButton {
        id: button

        anchors.right: parent.right
        implicitHeight: 24
        text: "Put back"
        onActivated: row.removal.putBack()
    }
}
