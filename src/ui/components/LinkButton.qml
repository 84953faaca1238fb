import QtQuick
import Swabby.Ui

// A few words that can be pressed, for what is no more than a help.
Pressable {
    id: button

    property string text

    name: text
    implicitWidth: Math.ceil(label.implicitWidth) + 12
    implicitHeight: 24
    opacity: !isAvailable ? 0.45 : isPressed ? 0.75 : 1

    PlainLabel {
        id: label

        anchors.centerIn: parent
        text: button.text
        font: Theme.buttonFont
        color: button.isAvailable ? Theme.accent : Theme.secondary
        Accessible.ignored: true
    }
}
