import QtQuick
import Swabby.Ui

// The way into the full check, and into what is going on.
Card {
    id: card

    required property MainWindowView view

    Item {
        width: parent.width
        height: 40

        Pressable {
            anchors.fill: parent
            anchors.topMargin: -card.verticalPadding
            anchors.bottomMargin: -card.verticalPadding
            anchors.leftMargin: -card.sidePadding
            anchors.rightMargin: -card.sidePadding
            innerRadius: 12
            name: Words.check + ", " + card.view.state.checkInvitation
            // Only then does the card say that it can be pressed.
            visible: card.view.state.isKnown && !card.view.state.isHealthy
            onActivated: card.view.showHealthDetail = true

            Rectangle {
                anchors.fill: parent
                radius: 12
                color: Theme.quietFill
                visible: (parent as Pressable).isHovered
            }
        }

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
                font: Theme.nameFont
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
