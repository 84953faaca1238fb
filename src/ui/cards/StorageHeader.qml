import QtQuick
import Swabby.Ui

// How full the disk is, what of it can go, and how that is done.
Card {
    id: card

    required property StorageView storage

    Item {
        width: parent.width
        height: 62 + note.height

        Figure {
            id: free

            text: card.storage.freeText
            font: Theme.figureFont
        }

        Remark {
            anchors.left: free.right
            anchors.leftMargin: 8
            anchors.right: warning.left
            anchors.rightMargin: 8
            anchors.baseline: free.baseline
            text: card.storage.totalText
        }

        Row {
            id: warning

            anchors.right: parent.right
            anchors.verticalCenter: free.verticalCenter
            spacing: 6

            LevelMark {
                id: mark

                anchors.verticalCenter: parent.verticalCenter
                tint: card.storage.usedTint
                Accessible.ignored: true
            }

            PlainLabel {
                text: mark.visible ? "Nearly full" : ""
                font: Theme.buttonFont
                color: Theme.inks[Tints.red]
            }
        }

        Bar {
            id: bar

            y: 30
            width: parent.width
            implicitHeight: 7
            fraction: card.storage.usedFraction + card.storage.clearableFraction
            fillColor: Theme.marks[Tints.orange]

            Rectangle {
                width: Math.max(0, bar.width * card.storage.usedFraction)
                height: bar.height
                radius: bar.radius
                color: Theme.marks[card.storage.usedTint]

                Behavior on width {
                    NumberAnimation {
                        duration: Theme.sheetDuration
                        easing.type: Easing.InOutQuad
                    }
                }
            }
        }

        Remark {
            id: clearable

            y: 42
            width: parent.width
            text: card.storage.clearableText
        }

        // The room for what can go is kept beneath it until there is something.
        Note {
            id: note

            y: clearable.text === "" ? clearable.y : 62
            width: parent.width
            text: card.storage.queueNote
        }
    }
}
