import QtQuick
import Swabby.Ui

// A program whose memory keeps climbing.
Card {
    id: banner

    required property leakText entry
    required property bool isLeaving

    signal explained
    signal quitted

    opacity: isLeaving ? 0.45 : 1
    isPaper: false
    fill: Theme.washes[Tints.orange]

    Row {
        width: parent.width
        spacing: 14

        SymbolItem {
            anchors.verticalCenter: parent.verticalCenter
            name: banner.isLeaving ? "checkmark.circle.fill" : "exclamationmark.triangle.fill"
            color: Theme.marks[banner.isLeaving ? Tints.green : Tints.orange]
            Accessible.role: Accessible.Graphic
            Accessible.name: banner.isLeaving ? Words.noLongerListed : "Warning"
        }

        Column {
            anchors.verticalCenter: parent.verticalCenter
            width: parent.width - 30 - buttons.width - 14

            Paragraph {
                width: parent.width
                text: banner.entry.headline
                font: Theme.headingFont
                Accessible.role: Accessible.Heading
            }

            Paragraph {
                width: parent.width
                text: banner.entry.detail
                font: Theme.smallFont
                color: Theme.primary
            }
        }

        Row {
            id: buttons

            anchors.verticalCenter: parent.verticalCenter
            spacing: 8

            ActionButton {
                text: Words.explain
                name: Words.explain + " " + banner.entry.headline
                onActivated: banner.explained()
            }

            ActionButton {
                text: "Quit App"
                name: "Quit App: " + banner.entry.headline
                visible: banner.entry.canQuit
                onActivated: banner.quitted()
            }
        }
    }
}
