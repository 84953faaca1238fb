pragma ComponentBehavior: Bound
import QtQuick
import Swabby.Ui

// The steps of the full check, ticking off.
Column {
    id: progress

    required property CheckView check

    topPadding: 36
    spacing: 14

    Card {
        width: parent.width
        verticalPadding: 24
        sidePadding: 28
        spacing: 12

        Repeater {
            model: progress.check.steps

            Item {
                id: step

                required property checkStep modelData

                width: parent?.width ?? 0
                height: 24
                Accessible.role: Accessible.ListItem
                Accessible.name: modelData.spoken

                SymbolItem {
                    anchors.verticalCenter: parent.verticalCenter
                    width: 18
                    height: 18
                    name: step.modelData.isDone ? "checkmark.circle.fill" : "circle"
                    color: step.modelData.isDone ? Theme.marks[Tints.green] : Theme.secondary
                    opacity: step.modelData.isDone ? 1 : 0.35
                }

                PlainLabel {
                    x: 30
                    width: parent.width - 30
                    anchors.verticalCenter: parent.verticalCenter
                    text: step.modelData.text
                    color: step.modelData.isDone ? Theme.primary : Theme.secondary
                    Accessible.ignored: true
                }
            }
        }

        Hairline {
        }

        Item {
            width: parent.width
            height: 28

            Spinner {
                id: spinner

                x: 1
                anchors.verticalCenter: parent.verticalCenter
                color: Theme.accent
            }

            PlainLabel {
                id: analyzing

                x: 30
                anchors.verticalCenter: parent.verticalCenter
                text: "Analyzing system health…"
            }

            Figure {
                anchors.left: analyzing.right
                anchors.leftMargin: 12
                anchors.right: stop.left
                anchors.rightMargin: 12
                anchors.verticalCenter: parent.verticalCenter
                horizontalAlignment: Text.AlignRight
                text: progress.check.lookingAt
                elide: Text.ElideMiddle
                font: Theme.smallFont
                color: Theme.secondary
            }

            ActionButton {
                id: stop

                anchors.right: parent.right
                text: "Stop"
                onActivated: progress.check.cancel()
            }
        }
    }

    Column {
        x: 24
        width: parent.width - 48
        spacing: 4

        Note {
            width: parent.width
            horizontalAlignment: Text.AlignHCenter
            text: "The summary is written by Claude — nothing about your files is sent, only counts and sizes."
        }

        Note {
            width: parent.width
            horizontalAlignment: Text.AlignHCenter
            text: progress.check.namesNote
        }
    }
}
