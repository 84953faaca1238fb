import QtQuick
import Swabby.Ui

// A bare symbol to press; its tooltip says what it does.
Pressable {
    id: button

    property string symbol
    property color symbolColor: Theme.secondary
    property real symbolSize: 16
    property color fill: "transparent"

    name: tip
    implicitWidth: 28
    implicitHeight: 28

    Rectangle {
        anchors.fill: parent
        radius: button.innerRadius
        color: button.isHovered && button.fill.a === 0 ? Theme.quietFill : button.fill
    }

    SymbolItem {
        anchors.centerIn: parent
        width: button.symbolSize
        height: button.symbolSize
        name: button.symbol
        color: button.symbolColor
        visible: !button.isBusy
    }

    Loader {
        anchors.centerIn: parent
        active: button.isBusy
        sourceComponent: Spinner {
        }
    }
}
