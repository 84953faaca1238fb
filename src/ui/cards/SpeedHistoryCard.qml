pragma ComponentBehavior: Bound
import QtQuick
import Swabby.Ui

// The last day of speed.
Card {
    id: card

    required property StateView figures

    spacing: 6

    CardHeading {
        text: "Speed · Last 24 hours"

        Remark {
            text: card.figures.hasSpeedLine ? card.figures.averageSpeed : ""
        }
    }

    Sparkline {
        width: parent.width
        height: 86
        day: card.figures.speedDay
        color: card.figures.hasSpeedLine ? Theme.accent : "transparent"
        gridColor: card.figures.hasSpeedLine ? Theme.hairline : "transparent"
        Accessible.role: Accessible.Chart
        Accessible.name: card.figures.speedSentence

        PlainLabel {
            anchors.centerIn: parent
            text: "Nothing to draw yet — the line grows as Swabby watches."
            color: Theme.secondary
            visible: !card.figures.hasSpeedLine
        }
    }

    Item {
        id: axis

        width: parent.width
        height: 14

        Repeater {
            model: ["24 h ago", "18 h", "12 h", "6 h", "Now"]

            PlainLabel {
                required property string modelData
                required property int index

                x: Math.round(Math.max(0, Math.min(axis.width - width, axis.width * index / 4 - width / 2)))
                text: modelData
                font: Theme.axisFont
                color: Theme.tertiary
            }
        }
    }
}
