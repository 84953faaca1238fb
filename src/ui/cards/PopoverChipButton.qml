import QtQuick
import Swabby.Ui

// One figure of the small panel; pressing it leads to its section.
Pressable {
    id: button

    property popoverChip chip
    property real scaling: 1
    readonly property real fittingScale: (width - 8) / value.implicitWidth

    name: chip.label + ", " + chip.value + (mark.visible ? ", " + mark.Accessible.name.toLowerCase() : "")
    innerRadius: 9
    implicitHeight: 68
    opacity: isPressed ? 0.75 : 1

    Rectangle {
        anchors.fill: parent
        radius: button.innerRadius
        color: Theme.card
        border.width: 1
        border.color: Theme.cardEdge
    }

    Rectangle {
        anchors.fill: parent
        radius: button.innerRadius
        color: Theme.quietFill
        visible: button.isHovered
    }

    SymbolItem {
        anchors.horizontalCenter: parent.horizontalCenter
        y: 8
        name: button.chip.symbol
        color: Theme.marks[button.chip.tint]
    }

    LevelMark {
        id: mark

        anchors.right: parent.right
        anchors.rightMargin: 5
        y: 5
        width: 11
        height: 11
        tint: button.chip.tint
        Accessible.ignored: true
    }

    Figure {
        id: value

        anchors.horizontalCenter: parent.horizontalCenter
        y: 26
        width: implicitWidth
        scale: button.scaling
        text: button.chip.value
        font: Theme.chipFont
        Accessible.ignored: true
    }

    PlainLabel {
        x: 3
        y: 46
        width: parent.width - 6
        horizontalAlignment: Text.AlignHCenter
        text: button.chip.label
        font: Theme.axisFont
        color: button.isHovered ? Theme.primary : Theme.secondary
        Accessible.ignored: true
    }
}
