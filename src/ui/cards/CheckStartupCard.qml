pragma ComponentBehavior: Bound
import QtQuick
import Swabby.Ui

// Things that start by themselves and that nobody vouches for.
Card {
    id: card

    required property CheckView check
    readonly property var busyItems: check.busyItems

    spacing: 4

    CardHeading {
        text: "Startup items to review"
    }

    RowStack {
        width: parent.width
        rows: card.check.startupItems
        rowHeight: 54

        Item {
            id: row

            required property startupRowText entry

            implicitHeight: 54
            Accessible.role: Accessible.ListItem
            Accessible.name: entry.label + ", " + entry.detail

            Hairline {
                width: parent.width
            }

            AppIcon {
                id: icon

                anchors.verticalCenter: parent.verticalCenter
                tile: row.entry.tile
            }

            Column {
                anchors.left: icon.right
                anchors.leftMargin: 11
                anchors.right: buttons.left
                anchors.rightMargin: 12
                anchors.verticalCenter: parent.verticalCenter
                spacing: 1

                NameLabel {
                    width: parent.width
                    text: row.entry.label
                    elide: Text.ElideMiddle
                }

                PlainLabel {
                    width: parent.width
                    text: row.entry.detail
                    font: Theme.smallFont
                    color: Theme.secondary
                }
            }

            Row {
                id: buttons

                anchors.right: parent.right
                anchors.verticalCenter: parent.verticalCenter
                spacing: 8

                ActionButton {
                    implicitHeight: 24
                    text: "Disable"
                    name: text + ": " + row.entry.label
                    isBusy: card.busyItems.includes(row.entry.id)
                    onActivated: card.check.disable(row.entry.id)
                }

                ActionButton {
                    implicitHeight: 24
                    text: "Ignore"
                    name: text + ": " + row.entry.label
                    onActivated: card.check.ignore(row.entry.id)
                }
            }
        }
    }
}
