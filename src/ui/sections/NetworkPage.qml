pragma ComponentBehavior: Bound
import QtQuick
import Swabby.Ui

// What moves data right now.
ScrollPage {
    id: page

    required property MainWindowView view

    Card {
        width: parent.width

        Item {
            width: parent.width
            height: 40

            Rectangle {
                id: plate

                width: 40
                height: 40
                radius: 10
                color: Theme.washes[Tints.accent]

                SymbolItem {
                    anchors.centerIn: parent
                    width: 20
                    height: 20
                    name: "wifi"
                    color: Theme.accent
                }
            }

            Column {
                anchors.left: plate.right
                anchors.leftMargin: 14
                anchors.right: parent.right
                anchors.verticalCenter: parent.verticalCenter

                Figure {
                    width: parent.width
                    text: page.view.state.networkRate
                    font: Theme.figureFont
                }

                PlainLabel {
                    width: parent.width
                    text: page.view.state.networkSentence
                    font: Theme.smallFont
                    color: Theme.secondary
                }
            }
        }
    }

    Card {
        width: parent.width
        spacing: 4

        Item {
            width: parent.width
            height: 28

            CardHeading {
                anchors.verticalCenter: parent.verticalCenter
                text: "Busiest on the network"
            }

            ProcessSearchField {
                anchors.right: parent.right
                width: Math.min(220, parent.width - 256)
                view: page.view
            }
        }

        ProcessListView {
            width: parent.width
            view: page.view
            rows: page.view.state.networkUsers
            emptyText: "Nothing is using the network right now."
            hasBars: true
        }
    }
}
