import QtQuick
import Swabby.Ui

// A quiet word about what was done, mostly that it did not work, with what can be done about it.
Rectangle {
    id: bar

    property string text
    property string offer
    property bool canBeDismissed: true
    property int tint: Tints.orange
    // It goes by itself once there was time to read it: while the window is in use and nobody points at it.
    property bool lingers: false

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
        id: area

        anchors.fill: parent
        hoverEnabled: true
    }

    Timer {
        // Each has its own time.
        readonly property string text: bar.text

        interval: 6000 + 60 * text.length
        onTextChanged: if (running)
            restart()
        running: bar.lingers && bar.visible && bar.Window.active && !area.containsMouse && !close.activeFocus
        onTriggered: bar.dismissed()
    }

    Rectangle {
        anchors.fill: parent
        radius: bar.radius
        color: Theme.washes[bar.tint]
    }

    SymbolItem {
        x: 12
        anchors.verticalCenter: parent.verticalCenter
        width: 16
        height: 16
        name: bar.tint === Tints.green ? "checkmark.circle.fill" : "info.circle"
        color: Theme.inks[bar.tint]
    }

    Paragraph {
        id: label

        anchors.left: parent.left
        anchors.leftMargin: 38
        anchors.right: bar.offer === "" ? close.left : button.left
        anchors.rightMargin: 8
        anchors.verticalCenter: parent.verticalCenter
        text: bar.text
        color: Theme.inks[bar.tint]
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
