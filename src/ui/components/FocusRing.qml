import QtQuick
import Swabby.Ui

// Where the keyboard is. A gap sets it off from what is filled with the accent itself.
Rectangle {
    property real innerRadius: 7
    property real gap: 2

    anchors.fill: parent
    anchors.margins: -3 - gap
    z: 1
    radius: innerRadius + 3 + gap
    color: "transparent"
    border.width: 3
    border.color: Theme.accent
    visible: parent.activeFocus
}
