import QtQuick
import Swabby.Ui

// A program whose memory keeps climbing.
Card {
    id: banner

    required property leakText entry

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
            width: parent.width - 30

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
    }
}
