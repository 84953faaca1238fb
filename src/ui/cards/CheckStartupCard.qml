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

        NamedRow {
            id: row

            required property startupRowText entry

            implicitHeight: 54
            Accessible.role: Accessible.ListItem
            Accessible.name: entry.label + ", " + entry.badge + ", " + (isLeaving ? Words.noLongerListed : entry.detail)
            hasLine: true
            tile: entry.tile
            name: entry.label
            detail: entry.detail
            badge: entry.badge
            badgeTint: entry.badgeTint
            nameElide: Text.ElideMiddle

            RowButton {
                text: "Disable"
                subject: row.entry.label
                isBusy: card.busyItems.includes(row.entry.id)
                onActivated: card.check.disable(row.entry.id)
            }

            RowButton {
                text: "Ignore"
                subject: row.entry.label
                onActivated: card.check.ignore(row.entry.id)
            }
        }
    }
}
