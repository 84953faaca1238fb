import QtQuick
import Swabby.Ui

// The way into the full check, and into what is going on.
Card {
    id: card

    required property MainWindowView view

    Item {
        width: parent.width
        height: 40

        SymbolPlate {
            id: plate

            width: 40
            height: 40
            radius: 10
            symbol: "shield.lefthalf.filled"
            symbolSize: 20
        }

        Column {
            anchors.left: plate.right
            anchors.leftMargin: 12
            anchors.right: buttons.left
            anchors.rightMargin: 12
            anchors.verticalCenter: parent.verticalCenter

            PlainLabel {
                width: parent.width
                text: Words.check
                font: Theme.headingFont
                Accessible.role: Accessible.Heading
            }

            Remark {
                width: parent.width
                text: card.view.state.checkInvitation
            }
        }

        Row {
            id: buttons

            anchors.right: parent.right
            anchors.verticalCenter: parent.verticalCenter
            spacing: 8

            ActionButton {
                text: "What's going on"
                enabled: card.view.state.isKnown
                onActivated: card.view.showHealthDetail = true
            }

            ActionButton {
                text: "Check"
                tip: Words.checkHint
                isProminent: true
                onActivated: card.view.openCheck()
            }
        }
    }
}
