import QtQuick
import Swabby.Ui

// One figure of the machine, in large type over its bar.
Card {
    id: card

    required property gauge entry
    required property int index

    spacing: 8
    Accessible.role: Accessible.StaticText
    Accessible.name: entry.title + ", " + (entry.value + " " + entry.rest).trim()

    Row {
        width: parent.width
        height: 18
        spacing: 5

        SymbolItem {
            anchors.verticalCenter: parent.verticalCenter
            width: 14
            height: 14
            name: card.entry.symbol
            color: Theme.secondary
        }

        Remark {
            anchors.verticalCenter: parent.verticalCenter
            width: parent.width - 19 - (warning.visible ? 19 : 0)
            text: card.entry.title
            Accessible.ignored: true
        }

        LevelMark {
            id: warning

            anchors.verticalCenter: parent.verticalCenter
            tint: card.entry.tint
        }
    }

    Item {
        width: parent.width
        height: 26

        Figure {
            id: value

            anchors.verticalCenter: parent.verticalCenter
            width: Math.min(implicitWidth, parent.width)
            // Where both hardly fit, the whole of them matters more than their digits standing still.
            isTabular: tabularWidth + 5 + rest.implicitWidth <= parent.width
            text: card.entry.value
            font: Theme.figureFont
            Accessible.ignored: true
        }

        Remark {
            id: rest

            anchors.baseline: value.baseline
            x: card.entry.value === "" ? 0 : value.width + 5
            width: parent.width - x
            text: card.entry.rest
            Accessible.ignored: true
        }
    }

    Bar {
        width: parent.width
        fraction: card.entry.fraction
        fillColor: Theme.marks[card.entry.tint]
    }
}
