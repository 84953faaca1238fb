import QtQuick
import Swabby.Ui

// Stands for a program without an icon.
Rectangle {
    id: tile

    property string letter
    property int tileColor: 0

    implicitWidth: 24
    implicitHeight: 24
    radius: width / 4
    color: Theme.tiles[tileColor]

    PlainLabel {
        anchors.centerIn: parent
        text: tile.letter
        font: Theme.smallHeadingFont
        color: "white"
        Accessible.ignored: true
    }
}
