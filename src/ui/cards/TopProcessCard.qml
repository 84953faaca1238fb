pragma ComponentBehavior: Bound
import QtQuick
import Swabby.Ui

// The program that uses the most power.
Card {
    id: card

    required property StateView figures

    verticalPadding: 12
    spacing: 8

    CardHeading {
        text: "Highest power right now"
    }

    Hairline {
        width: parent.width
    }

    Repeater {
        model: card.figures.topProcesses

        ProcessRowView {
            width: parent.width
            isCompact: card.figures.isCompact
        }
    }

    PlainLabel {
        width: parent.width
        text: "No processes found."
        color: Theme.secondary
        visible: card.figures.topProcesses.count === 0
    }
}
