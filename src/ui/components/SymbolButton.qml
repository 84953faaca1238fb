import QtQuick
import Swabby.Ui

// A bare symbol to press; its tooltip says what it does.
Pressable {
    id: button

    property string symbol
    property color symbolColor: Theme.secondary
    property real symbolSize: 16

    name: tip
    implicitWidth: 28
    implicitHeight: 28

    Rectangle {
        anchors.fill: parent
        radius: button.innerRadius
        color: button.isHovered ? Theme.quietFill : "transparent"
    }

    SymbolItem {
        anchors.centerIn: parent
        width: button.symbolSize
        height: button.symbolSize
        name: button.symbol
        color: button.symbolColor
        visible: !button.isBusy
    }

    Spinner {
        anchors.centerIn: parent
        visible: button.isBusy
    }
}
