import QtQuick
import Swabby.Ui

// The one running program worth watching.
Card {
    id: card

    required property CheckView check
    readonly property processRowText process: check.watched

    spacing: 8

    CardHeading {
        text: "High power usage"
    }

    Hairline {
    }

    NamedRow {
        width: parent.width
        height: 38
        tile: card.process.tile
        name: card.process.name
        detail: card.process.detail
        gap: 10

        RowButton {
            text: "Explain"
            subject: card.process.name
            onActivated: card.check.explain()
        }

        RowButton {
            text: "Quit"
            subject: card.process.name
            visible: card.process.canQuit
            onActivated: card.check.quit()
        }
    }
}
