import QtQuick
import Swabby.Ui

// A share of a whole as a bar that glides to new values.
Rectangle {
    id: bar

    property real fraction: 0
    property color fillColor: Theme.accent

    implicitHeight: 5
    radius: height / 2
    color: Theme.quietFill
    Accessible.ignored: true

    Rectangle {
        width: bar.fraction <= 0 ? 0 : Math.max(bar.height, bar.width * bar.fraction)
        height: bar.height
        radius: bar.radius
        color: bar.fillColor

        Behavior on width {
            NumberAnimation {
                duration: Theme.sheetDuration
                easing.type: Easing.InOutQuad
            }
        }
    }
}
