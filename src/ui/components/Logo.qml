import QtQuick
import Swabby.Ui

// The application's sign. Its colour changes between the rounded ends only, which are smooth without a graphics
// card too, as those of a gradient are not.
Rectangle {
    id: logo

    readonly property color low: "#0a6be6"

    implicitWidth: 20
    implicitHeight: 20
    radius: width / 4
    color: "#5ab8ff"

    Rectangle {
        y: logo.height / 2
        width: logo.width
        height: logo.height / 2
        radius: logo.radius
        color: logo.low
    }

    Rectangle {
        y: logo.radius
        width: logo.width
        height: logo.height - 2 * logo.radius
        gradient: Gradient {
            GradientStop {
                position: 0
                color: logo.color
            }

            GradientStop {
                position: 1
                color: logo.low
            }
        }
    }

    SymbolItem {
        anchors.fill: parent
        anchors.margins: parent.width / 12
        name: "swabby"
        color: "white"
    }
}
