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

        NamedRow {
            id: row

            required property startupRowText entry

            implicitHeight: 54
            Accessible.role: Accessible.ListItem
            Accessible.name: entry.label + (entry.badge === "" ? "" : ", " + entry.badge) + ", " + (isLeaving ? Words.noLongerListed : entry.detail)
            hasLine: true
            tile: entry.tile
            name: entry.label
            detail: entry.detail
            badge: entry.badge
            badgeTint: entry.badgeTint

            RowButton {
                text: Words.explain
                name: text + " " + row.entry.label
                visible: !card.isOff
                onActivated: card.view.startup.explain(row.entry.id)
            }

            RowButton {
                text: card.isOff ? "Turn on again" : "Disable"
                subject: row.entry.label
                isBusy: card.busyIds.includes(row.entry.id)
                visible: card.isOff || row.entry.canDisable
                onActivated: card.isOff ? card.view.startup.enable(row.entry.id) : card.view.startup.disable(row.entry.id)
            }

            MoreMenu {
                subject: row.entry.label
                entries: row.entry.menu
                visible: !card.isOff
                onChosen: command => card.view.startup.follow(command, row.entry.id)
            }
        }
    }
}
