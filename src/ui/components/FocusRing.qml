import QtQuick
import Swabby.Ui

// Where the keyboard is. A gap sets it off from what is filled with the accent itself.
Rectangle {
    property real innerRadius: 7

    anchors.fill: parent
    anchors.margins: -5
    z: 1
    radius: innerRadius + 5
    color: "transparent"
    border.width: 3
    border.color: Theme.accent
    visible: parent.activeFocus
}
