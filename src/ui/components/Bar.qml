import QtQuick
import Swabby.Ui

// A share of a whole as a bar that glides to new values. A step of a few pixels is not worth a dozen pictures.
Rectangle {
    id: bar

    property real fraction: 0
    property color fillColor: Theme.accent
    property real shown: 0

    function follow(): void {
        if (Math.abs(fraction - shown) * width > 12) {
            glide.to = fraction;
            glide.restart();
        } else {
            glide.stop();
            shown = fraction;
        }
    }

    implicitHeight: 5
    radius: height / 2
    color: Theme.quietFill
    Accessible.ignored: true
    onFractionChanged: follow()
    Component.onCompleted: shown = fraction

    NumberAnimation {
        id: glide

        target: bar
        property: "shown"
        duration: Theme.sheetDuration
        easing.type: Easing.InOutQuad
    }

    Rectangle {
        width: bar.shown <= 0 ? 0 : Math.max(bar.height, bar.width * bar.shown)
        height: bar.height
        radius: bar.radius
        color: bar.fillColor
    }
}
