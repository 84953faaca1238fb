import QtQuick
import Swabby.Ui

// How safe a program is to leave running, from 5 to 99.
Item {
    id: trust

    property string symbol
    property int score: 0

    implicitWidth: 34
    implicitHeight: 24
    Accessible.role: Accessible.StaticText
    Accessible.name: "Trust " + score + " of 100"

    SymbolItem {
        anchors.verticalCenter: parent.verticalCenter
        width: 14
        height: 14
        name: trust.symbol
        color: Theme.trustStar
    }

    Figure {
        x: 18
        anchors.verticalCenter: parent.verticalCenter
        text: trust.score
        font: Theme.smallFont
        color: Theme.secondary
        Accessible.ignored: true
    }

    MouseArea {
        anchors.fill: parent
        hoverEnabled: true
        onContainsMouseChanged: containsMouse ? Hints.show(trust, "Trust, of 100: how safe this is to leave running") : Hints.hide(trust)
    }
}
