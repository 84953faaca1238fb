pragma ComponentBehavior: Bound
import QtQuick
import Swabby.Ui

// Things that start by themselves, under one heading.
Card {
    id: card

    required property RowModel rows
    property string heading

    spacing: 4
    visible: rows.count > 0

    CardHeading {
        text: card.heading
    }

    Column {
        width: parent.width

        Repeater {
            model: card.rows

            Item {
                id: row

                required property startupRowText entry

                width: parent.width
                height: 54
                Accessible.role: Accessible.ListItem
                Accessible.name: entry.label + ", " + entry.badge + ", " + entry.detail

                Hairline {
                    width: parent.width
                }

                Column {
                    width: parent.width
                    anchors.verticalCenter: parent.verticalCenter
                    spacing: 1

                    Row {
                        width: parent.width
                        spacing: 8

                        PlainLabel {
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
            }
        }
    }
}
