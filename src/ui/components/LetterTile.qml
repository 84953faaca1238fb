import QtQuick
import Swabby.Ui

// Stands for a program without an icon.
Rectangle {
    id: tile

    property string letter
    property int tileColor: 0
    property font letterFont: Theme.smallHeadingFont

    implicitWidth: 24
    implicitHeight: 24
    radius: width / 4
    color: Theme.tiles[tileColor]

    PlainLabel {
        anchors.centerIn: parent
        text: tile.letter
        font: tile.letterFont
        color: "white"
        Accessible.ignored: true
    }
}
