import QtQuick
import Swabby.Ui

// The sign of what stands beside it, on a wash of the accent.
Rectangle {
    id: plate

    property string symbol
    property real symbolSize: 16
    property color ink: Theme.accent

    implicitWidth: 30
    implicitHeight: 30
    radius: 8
    color: Theme.washes[Tints.accent]

    SymbolItem {
        anchors.centerIn: parent
        width: plate.symbolSize
        height: plate.symbolSize
        name: plate.symbol
        color: plate.ink
    }
}
