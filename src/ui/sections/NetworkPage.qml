pragma ComponentBehavior: Bound
import QtQuick
import Swabby.Ui

// What moves data right now.
ScrollPage {
    id: page

    required property MainWindowView view
    readonly property bool isSearched: view.state.searchText.trim() !== ""

    Card {
        width: parent.width

        Item {
            width: parent.width
            height: 40

            SymbolPlate {
                id: plate

                width: 40
                height: 40
                radius: 10
                symbol: "wifi"
                symbolSize: 20
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

                Remark {
                    width: parent.width
                    text: page.view.state.networkSentence
                    // The list says so when there is nothing in it.
                    visible: page.isSearched || page.view.state.networkUsers.count > 0
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
            emptyText: page.isSearched ? page.view.state.noProcesses : page.view.state.networkSentence
            hasBars: true
        }
    }
}
