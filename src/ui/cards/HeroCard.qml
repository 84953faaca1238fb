import QtQuick
import Swabby.Ui

// The way into the full check, and into what is going on.
Card {
    id: card

    required property MainWindowView view

    Item {
        width: parent.width
        height: 40

        Rectangle {
            id: plate

            width: 40
            height: 40
            radius: 10
            color: Theme.washes[Tints.accent]

            SymbolItem {
                anchors.centerIn: parent
                width: 20
                height: 20
                name: "shield.lefthalf.filled"
                color: Theme.accent
            }
        }

        Column {
            anchors.left: plate.right
            anchors.leftMargin: 12
            anchors.right: buttons.left
            anchors.rightMargin: 12
            anchors.verticalCenter: parent.verticalCenter

            PlainLabel {
                width: parent.width
                text: "Swabby Check"
                font: Theme.headingFont
                Accessible.role: Accessible.Heading
            }

            PlainLabel {
                width: parent.width
                text: !card.view.state.isKnown ? "Taking a first look at your Mac…" : card.view.state.isHealthy ? "AI scan for storage clutter & power hogs" : "Issues detected · tap to inspect"
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
                text: "What's going on"
                enabled: card.view.state.isKnown
                onActivated: card.view.showHealthDetail = true
            }

            ActionButton {
                text: "Check"
                tip: "One-tap check of your Mac's health"
                isProminent: true
                onActivated: card.view.openCheck()
            }
        }
    }
}
