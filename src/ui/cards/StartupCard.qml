pragma ComponentBehavior: Bound
import QtQuick
import Swabby.Ui

// Things that start by themselves, under one heading.
Card {
    id: card

    required property MainWindowView view
    required property RowModel rows
    property string heading
    property bool isOff: false
    readonly property var busyIds: view.startup.busyIds

    spacing: 4
    visible: rows.count > 0

    CardHeading {
        text: card.heading
    }

    RowStack {
        width: parent.width
        rows: card.rows
        rowHeight: 54

        Item {
            id: row

            required property startupRowText entry

            implicitHeight: 54
            Accessible.role: Accessible.ListItem
            Accessible.name: entry.label + (entry.badge === "" ? "" : ", " + entry.badge) + ", " + entry.detail

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
                anchors.right: actions.left
                anchors.rightMargin: 12
                anchors.verticalCenter: parent.verticalCenter
                spacing: 1

                Row {
                    width: parent.width
                    spacing: 8

                    NameLabel {
                        width: Math.min(implicitWidth, parent.width - (badge.visible ? badge.width + 8 : 0))
                        anchors.verticalCenter: parent.verticalCenter
                        text: row.entry.label
                    }

                    Badge {
                        id: badge

                        anchors.verticalCenter: parent.verticalCenter
                        text: row.entry.badge
                        tint: row.entry.badgeTint
                    }
                }

                PlainLabel {
                    width: parent.width
                    text: row.entry.detail
                    font: Theme.smallFont
                    color: Theme.secondary
                }
            }

            Row {
                id: actions

                anchors.right: parent.right
                anchors.verticalCenter: parent.verticalCenter
                spacing: 8

                ActionButton {
                    anchors.verticalCenter: parent.verticalCenter
                    implicitHeight: 24
                    text: "What is this?"
                    name: "What is this? " + row.entry.label
                    visible: !card.isOff
                    onActivated: card.view.startup.explain(row.entry.id)
                }

                ActionButton {
                    anchors.verticalCenter: parent.verticalCenter
                    implicitHeight: 24
                    text: card.isOff ? "Turn on again" : "Disable"
                    name: text + ": " + row.entry.label
                    isBusy: card.busyIds.includes(row.entry.id)
                    visible: card.isOff || row.entry.canDisable
                    onActivated: card.isOff ? card.view.startup.enable(row.entry.id) : card.view.startup.disable(row.entry.id)
                }

                MoreMenu {
                    anchors.verticalCenter: parent.verticalCenter
                    subject: row.entry.label
                    labels: row.entry.canReveal ? ["Reveal in Finder", "Open Startup Items in System Settings"] : ["Open Startup Items in System Settings"]
                    visible: !card.isOff
                    onChosen: index => labels[index] === "Reveal in Finder" ? card.view.startup.reveal(row.entry.id) : card.view.startup.openSettings()
                }
            }
        }
    }
}
