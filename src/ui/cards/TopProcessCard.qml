pragma ComponentBehavior: Bound
import QtQuick
import Swabby.Ui

// The program that uses the most power.
Card {
    id: card

    required property MainWindowView view
    readonly property StateView figures: view.state

    verticalPadding: 12
    spacing: 8

    CardHeading {
        text: "Highest power right now"
    }

    Hairline {
    }

    Repeater {
        model: card.figures.topProcesses

        Item {
            id: place

            required property processRowText entry
            required property bool isLeaving

            width: parent.width
            height: row.implicitHeight
            Accessible.role: Accessible.ListItem
            Accessible.name: row.spoken
            opacity: isLeaving ? 0.45 : 1

            ProcessRowView {
                id: row

                width: parent.width - actions.width - 12
                entry: place.entry
                isLeaving: place.isLeaving
                isCompact: card.figures.isCompact
            }

            ProcessActions {
                id: actions

                anchors.right: parent.right
                anchors.verticalCenter: parent.verticalCenter
                view: card.view
                entry: place.entry
            }
        }
    }

    PlainLabel {
        width: parent.width
        text: card.figures.noProcesses
        color: Theme.secondary
        visible: card.figures.topProcesses.count === 0
    }
}
