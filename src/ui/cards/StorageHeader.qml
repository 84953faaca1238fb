import QtQuick
import Swabby.Ui

// How full the disk is, what of it can go, and the queue of what was chosen.
Card {
    id: card

    required property StorageView storage

    Item {
        width: parent.width
        height: 58

        Item {
            anchors.left: parent.left
            anchors.right: queue.left
            anchors.rightMargin: 24
            height: parent.height

            Figure {
                id: free

                text: card.storage.freeText
                font: Theme.figureFont
            }

            PlainLabel {
                anchors.left: free.right
                anchors.leftMargin: 8
                anchors.right: parent.right
                anchors.baseline: free.baseline
                text: card.storage.totalText
                font: Theme.smallFont
                color: Theme.secondary
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
                    color: Theme.accent

                    Behavior on width {
                        NumberAnimation {
                            duration: Theme.sheetDuration
                            easing.type: Easing.InOutQuad
                        }
                    }
                }
            }

            PlainLabel {
                anchors.bottom: parent.bottom
                width: parent.width
                text: card.storage.clearableText
                font: Theme.smallFont
                color: Theme.secondary
            }
        }

        Column {
            id: queue

            anchors.right: parent.right
            anchors.verticalCenter: parent.verticalCenter
            spacing: 6

            PlainLabel {
                anchors.right: parent.right
                text: card.storage.queueText
                font: Theme.smallFont
                color: Theme.secondary
            }

            ActionButton {
                anchors.right: parent.right
                text: "Review and clean up"
                isProminent: true
                isAvailable: card.storage.canCleanUp
                onActivated: card.storage.cleanUp()
            }
        }
    }
}
