import QtQuick
import Swabby.Ui

// A verdict in a capsule.
Rectangle {
    id: chip

    property string text
    property int tint: 0

    implicitWidth: label.implicitWidth + 22
    implicitHeight: 26
    radius: height / 2
    color: Theme.washes[tint]

    PlainLabel {
        id: label

        anchors.centerIn: parent
        text: chip.text
        font: Theme.buttonFont
        color: Theme.inks[chip.tint]
    }
}
