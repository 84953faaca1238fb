import QtQuick
import Swabby.Ui

// A button with words; prominent for what Return does, destructive for what cannot be taken back.
Pressable {
    id: button

    property string text
    property bool isProminent: false
    property bool isDestructive: false

    readonly property color quietColor: isHovered ? Theme.hoverFill : Theme.quietFill

    name: text
    implicitWidth: Math.ceil(label.implicitWidth) + 24
    implicitHeight: 28
    opacity: !enabled ? 0.45 : isPressed ? 0.75 : 1

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
