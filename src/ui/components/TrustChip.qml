import QtQuick
import Swabby.Ui

// How safe a program is to leave running, in a capsule.
Rectangle {
    id: chip

    property string text
    property string symbol

    implicitWidth: label.implicitWidth + 42
    implicitHeight: 26
    radius: height / 2
    color: Theme.quietFill
    visible: text !== ""

    SymbolItem {
        x: 11
        anchors.verticalCenter: parent.verticalCenter
        width: 14
        height: 14
        name: chip.symbol
        color: Theme.trustStar
    }

    PlainLabel {
        id: label

        x: 31
        anchors.verticalCenter: parent.verticalCenter
        text: chip.text
        font: Theme.buttonFont
        color: Theme.primary
    }
}
