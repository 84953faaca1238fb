import QtQuick
import Swabby.Ui

// A program whose memory keeps climbing.
Card {
    id: banner

    required property leakText entry

    signal explained
    signal quitted

    isPaper: false
    fill: Theme.washes[Tints.orange]

    Row {
        width: parent.width
        spacing: 14

        SymbolItem {
            anchors.verticalCenter: parent.verticalCenter
            name: "exclamationmark.triangle.fill"
            color: Theme.marks[Tints.orange]
            Accessible.role: Accessible.Graphic
            Accessible.name: "Warning"
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
