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
        width: parent.width
    }

    Item {
        width: parent.width
        height: 38

        AppIcon {
            id: tile

            anchors.verticalCenter: parent.verticalCenter
            tile: card.process.tile
        }

        Column {
            anchors.left: tile.right
            anchors.leftMargin: 10
            anchors.right: buttons.left
            anchors.rightMargin: 12
            anchors.verticalCenter: parent.verticalCenter
            spacing: 1

            NameLabel {
                width: parent.width
                text: card.process.name
            }

            PlainLabel {
                width: parent.width
                text: card.process.detail
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
                text: "Explain"
                name: text + ": " + card.process.name
                onActivated: card.check.explain()
            }

            ActionButton {
                implicitHeight: 24
                text: "Quit"
                name: text + ": " + card.process.name
                onActivated: card.check.quit()
            }
        }
    }
}
