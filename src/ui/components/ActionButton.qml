import QtQuick
import Swabby.Ui

// A button with words; prominent for what Return does, destructive for what cannot be taken back.
Pressable {
    id: button

    property string text
    property bool isProminent: false
    property bool isDestructive: false

    readonly property color quietColor: isHovered ? Theme.hoverFill : Theme.quietFill
    readonly property bool isInRow: height < 26

    name: text
    tip: label.truncated ? text : ""
    implicitWidth: Math.ceil(label.implicitWidth) + (isInRow ? 20 : 24)
    implicitHeight: 28
    opacity: !isAvailable ? 0.45 : isPressed ? 0.75 : 1

    Rectangle {
        anchors.fill: parent
        radius: button.innerRadius
        color: button.isProminent && button.isDestructive ? Theme.dangerFill : button.isProminent ? Theme.accentFill : button.isDestructive ? Theme.washes[Tints.red] : button.quietColor

        Behavior on color {
            ColorAnimation {
                duration: Theme.foldDuration
            }
        }
    }

    // A prominent button deepens under the pointer, one that destroys gains an edge: its words stay readable.
    Rectangle {
        anchors.fill: parent
        radius: button.innerRadius
        color: button.isProminent ? Qt.rgba(0, 0, 0, 0.1) : "transparent"
        border.width: button.isProminent ? 0 : 1
        border.color: Theme.inks[Tints.red]
        visible: button.isHovered && (button.isProminent || button.isDestructive)
    }

    PlainLabel {
        id: label

        anchors.centerIn: parent
        width: Math.min(implicitWidth, button.width - 16)
        text: button.text
        font: Theme.buttonFont
        color: button.isProminent ? Theme.onAccent : button.isDestructive ? Theme.inks[Tints.red] : Theme.primary
        visible: !button.isBusy
        Accessible.ignored: true
    }

    Loader {
        anchors.centerIn: parent
        active: button.isBusy
        sourceComponent: Spinner {
        }
    }
}
