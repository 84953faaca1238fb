import QtQuick
import Swabby.Ui

// Where the keyboard is.
Rectangle {
    property real innerRadius: 7

    anchors.fill: parent
    anchors.margins: -3
    z: 1
    radius: innerRadius + 3
    color: "transparent"
    border.width: 3
    border.color: Theme.accent
    visible: parent.activeFocus
}
