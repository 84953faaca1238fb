import QtQuick
import Swabby.Ui

// A quiet word about something that did not work, until it is read, with what can be done about it.
Rectangle {
    id: bar

    property string text
    property string offer
    property bool canBeDismissed: true

    signal accepted
    signal dismissed

    implicitHeight: visible ? Math.max(36, label.implicitHeight + 16) : 0
    radius: 10
    color: Theme.window
    visible: text !== ""
    Accessible.role: Accessible.AlertMessage
    Accessible.name: text

    // It may reach over the page, and what lies there is not meant by a press on it.
    MouseArea {
        anchors.fill: parent
        hoverEnabled: true
    }

    Rectangle {
        anchors.fill: parent
        radius: bar.radius
        color: Theme.washes[Tints.orange]
    }

    SymbolItem {
        x: 12
        anchors.verticalCenter: parent.verticalCenter
        width: 16
        height: 16
        name: "info.circle"
        color: Theme.inks[Tints.orange]
    }

    Paragraph {
        id: label

        anchors.left: parent.left
        anchors.leftMargin: 38
        anchors.right: bar.offer === "" ? close.left : button.left
        anchors.rightMargin: 8
        anchors.verticalCenter: parent.verticalCenter
        text: bar.text
        color: Theme.inks[Tints.orange]
        Accessible.ignored: true
    }

    ActionButton {
        id: button

        anchors.right: parent.right
        anchors.rightMargin: 8
        anchors.verticalCenter: parent.verticalCenter
        implicitHeight: 24
        visible: bar.offer !== ""
        text: bar.offer
        onActivated: bar.accepted()
    }

    SymbolButton {
        id: close

        anchors.right: parent.right
        anchors.rightMargin: 6
        anchors.verticalCenter: parent.verticalCenter
        symbol: "xmark"
        symbolSize: 12
        tip: "Dismiss"
        visible: bar.canBeDismissed
        onActivated: bar.dismissed()
    }
}
