import QtQuick
import Swabby.Ui

// Lies over a page and moves it: by a wheel, which moves it and nothing else, by its bar and by a finger, which may
// flick it. A mouse that is held down does not. On top, since the rows' own areas take what is pressed.
Item {
    id: hands

    required property Flickable page
    required property real viewHeight
    // What was pressed with last.
    property bool isTouched: false

    signal wanted(y: real)

    anchors.fill: parent
    z: 1

    PointHandler {
        acceptedDevices: PointerDevice.TouchScreen
        onActiveChanged: if (active)
            hands.isTouched = true
    }

    PointHandler {
        acceptedDevices: PointerDevice.AllDevices & ~PointerDevice.TouchScreen
        onActiveChanged: if (active)
            hands.isTouched = false
    }

    WheelHandler {
        acceptedDevices: PointerDevice.AllDevices
        onWheel: event => hands.wanted(hands.page.contentY - (event.pixelDelta.y || event.angleDelta.y * 0.6))
    }

    ScrollBar {
        page: hands.page
        height: hands.viewHeight
        onWanted: y => hands.wanted(y)
    }
}
