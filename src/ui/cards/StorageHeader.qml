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

            Remark {
                anchors.left: free.right
                anchors.leftMargin: 8
                anchors.right: parent.right
                anchors.baseline: free.baseline
                text: card.storage.totalText
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

            Remark {
                anchors.bottom: parent.bottom
                width: parent.width
                text: card.storage.clearableText
            }
        }

        Column {
            id: queue

            anchors.right: parent.right
            anchors.verticalCenter: parent.verticalCenter
            spacing: 6

            Remark {
                anchors.right: parent.right
                text: card.storage.queueText
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
