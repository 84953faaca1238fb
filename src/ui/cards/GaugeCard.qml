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

        PlainLabel {
            anchors.verticalCenter: parent.verticalCenter
            width: parent.width - 19
            text: card.entry.title
            font: Theme.smallFont
            color: Theme.secondary
            Accessible.ignored: true
        }
    }

    Item {
        width: parent.width
        height: 26

        PlainLabel {
            id: value

            anchors.verticalCenter: parent.verticalCenter
            width: Math.min(implicitWidth, parent.width)
            text: card.entry.value
            font: Theme.figureFont
            Accessible.ignored: true
        }

        PlainLabel {
            anchors.baseline: value.baseline
            x: card.entry.value === "" ? 0 : value.width + 5
            width: parent.width - x
            text: card.entry.rest
            font: Theme.smallFont
            color: Theme.secondary
            Accessible.ignored: true
        }
    }

    Bar {
        width: parent.width
        fraction: card.entry.fraction
        fillColor: Theme.marks[card.entry.tint]
    }
}
