import QtQuick
import Swabby.Ui

// What was chosen on a page and what becomes of it, at the page's bottom wherever that is scrolled to.
Rectangle {
    id: bar

    property string text
    property string note
    property string action
    property bool canAct: false
    readonly property real side: Math.max(20, Math.round((width - Theme.columnWidth) / 2))

    signal acted

    implicitHeight: 68
    color: Theme.window

    Hairline {
    }

    // What lies beneath is not meant by a press on the bar, nor by one on its resting button.
    MouseArea {
        anchors.fill: parent
        hoverEnabled: true
    }

    Column {
        anchors.left: parent.left
        anchors.leftMargin: bar.side
        anchors.right: button.left
        anchors.rightMargin: 16
        anchors.verticalCenter: parent.verticalCenter
        spacing: 2

        Figure {
            width: parent.width
            text: bar.text
            font: Theme.headingFont
            visible: text !== ""
        }

        Remark {
            width: parent.width
            text: bar.note
        }
    }

    ActionButton {
        id: button

        anchors.right: parent.right
        anchors.rightMargin: bar.side
        anchors.verticalCenter: parent.verticalCenter
        text: bar.action
        isProminent: true
        isAvailable: bar.canAct
        onActivated: bar.acted()
    }
}
