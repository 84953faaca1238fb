import QtQuick
import Swabby.Ui

// The one running program worth watching.
Card {
    id: card

    required property CheckView check
    required property processRowText entry
    required property bool isLeaving

    spacing: 8

    CardHeading {
        text: "High power usage"
    }

    Hairline {
    }

    NamedRow {
        width: parent.width
        height: 38
        tile: card.entry.tile
        name: card.entry.name
        detail: card.entry.detail
        gap: 10
        isLeaving: card.isLeaving

        RowButton {
            text: "Explain"
            subject: card.entry.name
            onActivated: card.check.explain()
        }

        RowButton {
            text: "Quit"
            subject: card.entry.name
            visible: card.entry.canQuit
            onActivated: card.check.quit()
        }
    }
}
