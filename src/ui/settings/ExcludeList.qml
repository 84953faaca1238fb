pragma ComponentBehavior: Bound
import QtQuick
import Swabby.Ui

// What is never to be removed, whatever is found there.
Card {
    id: card

    required property SettingsView view

    function add(): void {
        if (card.view.addExcluded(field.content))
            field.clear();
    }

    spacing: 8

    CardHeading {
        text: "Never remove"
    }

    Note {
        width: parent.width
        text: "Nothing in these places is ever offered for cleaning. Choose a folder, type a path, or drop one here."
    }

    Column {
        width: parent.width

        Repeater {
            model: card.view.neverRemove

            Item {
                id: row

                required property string entry
                required property bool isLeaving

                width: parent.width
                height: 32
                opacity: isLeaving ? 0.45 : 1
                Accessible.role: Accessible.ListItem
                Accessible.name: entry + (isLeaving ? ", " + Words.noLongerListed : "")

                Hairline {
                }

                SymbolItem {
                    anchors.verticalCenter: parent.verticalCenter
                    name: "folder"
                    color: Theme.secondary
                }

                NameLabel {
                    x: 24
                    width: parent.width - 60 - (left.visible ? left.width + 12 : 0)
                    anchors.verticalCenter: parent.verticalCenter
                    text: row.entry
                    font: Theme.smallFont
                    elide: Text.ElideMiddle
                }

                Remark {
                    id: left

                    anchors.right: parent.right
                    anchors.rightMargin: 36
                    anchors.verticalCenter: parent.verticalCenter
                    text: Words.noLongerListed
                    visible: row.isLeaving
                }

                SymbolButton {
                    anchors.right: parent.right
                    anchors.verticalCenter: parent.verticalCenter
                    width: 24
                    height: 24
                    symbol: "minus"
                    symbolSize: 13
                    tip: "Allow cleaning here again"
                    onActivated: card.view.removeExcluded(row.entry)
                }
            }
        }
    }

    Row {
        width: parent.width
        spacing: 8

        TextField {
            id: field

            width: parent.width - addButton.width - chooseButton.width - 16
            implicitHeight: 28
            name: "Path of a file or folder to keep"
            placeholder: "~/Documents"
            onAccepted: card.add()
        }

        ActionButton {
            id: addButton

            text: "Add"
            onActivated: card.add()
        }

        ActionButton {
            id: chooseButton

            text: "Choose folder…"
            onActivated: card.view.folder.open()
        }
    }

    DropArea {
        parent: card
        anchors.fill: parent
        keys: ["text/uri-list"]
        onDropped: drop => card.view.addDropped(drop.urls)

        Rectangle {
            anchors.fill: parent
            radius: 12
            color: "transparent"
            border.width: 2
            border.color: Theme.accent
            visible: parent.containsDrag
        }
    }
}
