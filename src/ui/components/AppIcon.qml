import QtQuick
import Swabby.Ui

// A program's icon; its letter on a tile until that is there, and for a program without one. The name beside
// it says who it is.
Item {
    id: root

    property programTile tile
    property font letterFont: Theme.smallHeadingFont

    implicitWidth: 24
    implicitHeight: 24

    LetterTile {
        anchors.fill: parent
        letter: root.tile.letter
        tileColor: root.tile.color
        letterFont: root.letterFont
        visible: !icon.isThere
    }

    ProgramIcon {
        id: icon

        anchors.fill: parent
        tile: root.tile
    }
}
