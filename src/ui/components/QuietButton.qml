import QtQuick
import Swabby.Ui

// A button with a symbol beside its words.
Pressable {
    id: button

    property string text
    property string symbol

    name: text
    implicitWidth: Math.ceil(content.width) + 24
    implicitHeight: 28
    opacity: isPressed ? 0.75 : 1

    Rectangle {
        anchors.fill: parent
        radius: button.innerRadius
        color: button.isHovered ? Theme.hoverFill : Theme.quietFill
    }

    Row {
        id: content

        anchors.centerIn: parent
        spacing: 6

        SymbolItem {
            anchors.verticalCenter: parent.verticalCenter
            name: button.symbol
            color: Theme.primary
        }

        PlainLabel {
            anchors.verticalCenter: parent.verticalCenter
            text: button.text
            font: Theme.buttonFont
            Accessible.ignored: true
        }
    }
}
