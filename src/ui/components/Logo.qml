import QtQuick
import Swabby.Ui

// The application's sign.
Rectangle {
    implicitWidth: 20
    implicitHeight: 20
    radius: width / 4
    gradient: Gradient {
        GradientStop {
            position: 0
            color: "#5ab8ff"
        }

        GradientStop {
            position: 1
            color: "#0a6be6"
        }
    }

    SymbolItem {
        anchors.fill: parent
        anchors.margins: parent.width / 12
        name: "swabby"
        color: "white"
    }
}
