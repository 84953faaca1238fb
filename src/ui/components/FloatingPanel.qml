import QtQuick
import Swabby.Ui

// A small window without a frame that floats beside the item in the menu bar. Where the desktop blends windows
// it has round corners and throws a shadow, for which the window keeps a margin around the panel.
FixedWindow {
    id: window

    property real panelWidth: 280
    property real panelHeight: 0
    property real panelRadius: 12
    property color fill: Theme.window
    property bool isBlended: false
    readonly property real margin: isBlended ? 24 : 0
    default property alias content: panel.data

    width: panelWidth + 2 * margin
    wantedHeight: panelHeight + 2 * margin
    // A window of the kind that closes by itself is not to be had on every desktop.
    flags: Qt.Tool | Qt.FramelessWindowHint | Qt.WindowStaysOnTopHint | Qt.NoDropShadowWindowHint
    color: isBlended ? "transparent" : fill

    // The margin is no part of the panel: a press there is one beside it.
    MouseArea {
        anchors.fill: parent
        onPressed: window.close()
    }

    FocusScope {
        id: panel

        x: window.margin
        y: window.margin
        width: window.panelWidth
        height: window.panelHeight
        focus: true

        MouseArea {
            anchors.fill: parent
        }

        FloatingShadow {
            innerRadius: window.panelRadius
            layers: 7
            visible: window.isBlended
        }

        Rectangle {
            anchors.fill: parent
            radius: window.isBlended ? window.panelRadius : 0
            color: window.fill
            border.width: 1
            border.color: Theme.cardEdge
        }
    }

    HintBubble {
    }
}
