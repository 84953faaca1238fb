import QtQuick
import Swabby.Ui

// A symbol and a word in the toolbar; where it is tight the symbol stands alone.
Pressable {
    id: button

    property string symbol
    property string text
    property bool isTight: false
    readonly property real wholeWidth: 28 + Math.ceil(label.implicitWidth) + 10

    name: text
    implicitWidth: isTight ? 28 : wholeWidth
    implicitHeight: 28

    Rectangle {
        anchors.fill: parent
        radius: button.innerRadius
        color: button.isHovered ? Theme.quietFill : "transparent"
    }

    SymbolItem {
        x: 6
        anchors.verticalCenter: parent.verticalCenter
        width: 16
        height: 16
        name: button.symbol
        color: button.isHovered ? Theme.primary : Theme.secondary
    }

    PlainLabel {
        id: label

        x: 28
        anchors.verticalCenter: parent.verticalCenter
        text: button.text
        font: Theme.buttonFont
        color: button.isHovered ? Theme.primary : Theme.secondary
        visible: !button.isTight
        Accessible.ignored: true
    }
}
