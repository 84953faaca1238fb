pragma ComponentBehavior: Bound
import QtQuick
import Swabby.Ui

// Build caches, simulators and containers.
ScrollPage {
    id: page

    required property MainWindowView view
    readonly property DeveloperView developer: view.developer

    component RowsCard: Card {
        id: rowsCard

        required property RemovableList list
        property alias symbol: header.symbol
        property alias title: header.title
        property alias subtitle: header.subtitle
        property string size

        width: parent === null ? 0 : parent.width
        spacing: 6
        visible: list.rows.count > 0

        CleanupHeader {
            id: header

            PlainLabel {
                anchors.verticalCenter: parent.verticalCenter
                text: rowsCard.size
                font: Theme.titleFont
            }
        }

        RemovableRows {
            width: parent.width
            list: rowsCard.list
            actionLabel: "Remove"
            onActed: id => page.developer.remove(id)
            onShown: path => page.view.coordinator.confirmation.showInFolder(path)
        }
    }

    Item {
        width: parent.width
        height: 32
        visible: page.developer.isDone

        PlainLabel {
            anchors.left: parent.left
            anchors.right: controls.left
            anchors.rightMargin: 12
            anchors.verticalCenter: parent.verticalCenter
            text: page.developer.clearable
            color: Theme.secondary
        }

        ScanControls {
            id: controls

            anchors.right: parent.right
            anchors.verticalCenter: parent.verticalCenter
            scan: page.developer.text
            onBegun: page.developer.scan()
            onStopped: page.developer.stop()
        }
    }

    Card {
        width: parent.width
        verticalPadding: 28
        spacing: 14
        visible: !page.developer.isDone

        Item {
            anchors.horizontalCenter: parent.horizontalCenter
            width: 28
            height: 28

            SymbolItem {
                anchors.fill: parent
                name: "hammer"
                color: Theme.accent
                visible: !page.developer.text.isScanning
            }

            Spinner {
                anchors.fill: parent
                color: Theme.accent
                visible: page.developer.text.isScanning
            }
        }

        CenteredLabel {
            text: page.developer.text.isScanning ? page.developer.text.progress : page.developer.text.subtitle
            elide: Text.ElideMiddle
        }

        ActionButton {
            anchors.horizontalCenter: parent.horizontalCenter
            text: page.developer.text.action
            isProminent: !page.developer.text.isScanning
            onActivated: page.developer.text.isScanning ? page.developer.stop() : page.developer.scan()
        }
    }

    Repeater {
        model: page.developer.buildCaches.rows

        Card {
            id: buildCache

            required property removableRowText entry
            required property bool isLeaving

            width: parent.width
            opacity: isLeaving ? 0.45 : 1

            CleanupHeader {
                symbol: "hammer"
                title: Words.xcodeCache
                subtitle: buildCache.isLeaving ? Words.noLongerListed : "Build cache automatically rebuilt on next compilation."

                PlainLabel {
                    anchors.verticalCenter: parent.verticalCenter
                    text: buildCache.entry.size
                    font: Theme.titleFont
                }

                ActionButton {
                    anchors.verticalCenter: parent.verticalCenter
                    text: "Remove"
                    name: "Remove: " + Words.xcodeCache
                    onActivated: page.developer.remove(buildCache.entry.id)
                }
            }
        }
    }

    RowsCard {
        symbol: "shippingbox"
        title: "Old Simulator Runtimes"
        subtitle: "Not used for two weeks or more"
        size: page.developer.runtimesSize
        list: page.developer.runtimes
    }

    RowsCard {
        symbol: "hammer"
        title: "Build Tool Caches"
        subtitle: "Downloaded or built again when they are needed."
        size: page.developer.toolCachesSize
        list: page.developer.toolCaches
    }

    Repeater {
        model: page.developer.docker.rows

        DockerCard {
            width: parent.width
            developer: page.developer
        }
    }

    Card {
        width: parent.width
        visible: page.developer.dockerIsOff

        PlainLabel {
            width: parent.width
            text: "Docker installed but not running."
            color: Theme.secondary
        }
    }

    Card {
        width: parent.width
        visible: page.developer.text.empty !== ""

        CenteredLabel {
            topPadding: 8
            bottomPadding: 8
            text: page.developer.text.empty
            wrapMode: Text.Wrap
        }
    }
}
