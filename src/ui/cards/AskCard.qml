pragma ComponentBehavior: Bound
import QtQuick
import Swabby.Ui

// The question, what to ask if one has none, and the answer.
Item {
    id: card

    required property AskView view

    function ask(question: string): void {
        card.view.question = question;
        card.view.ask();
        field.forceActiveFocus();
    }

    implicitHeight: column.implicitHeight

    // Pressing where nothing is leads to the field.
    TapHandler {
        onTapped: field.forceActiveFocus()
    }

    Column {
        id: column

        width: parent.width
        spacing: 14

        Row {
            width: parent.width
            spacing: 10

            SymbolPlate {
                anchors.verticalCenter: parent.verticalCenter
                symbol: "sparkles"
                ink: Theme.inks[Tints.accent]
            }

            Column {
                PlainLabel {
                    text: Words.askHint
                    font: Theme.titleFont
                    Accessible.role: Accessible.Heading
                }

                Remark {
                    text: Words.aboutAsking
                }
            }
        }

        TextField {
            id: field

            width: parent.width
            implicitHeight: 38
            focus: true
            name: "Your question"
            placeholder: Words.askPlaceholder
            trailing: 40
            content: card.view.question
            onContentChanged: card.view.question = content
            onAccepted: card.view.ask()

            SymbolButton {
                anchors.right: parent.right
                anchors.rightMargin: 6
                anchors.verticalCenter: parent.verticalCenter
                width: 26
                height: 26
                symbol: "arrow.up"
                symbolSize: 14
                symbolColor: Theme.onAccent
                fill: card.view.canAsk || isBusy ? Theme.accentFill : Theme.tertiary
                tip: "Ask"
                isBusy: card.view.isAsking
                onActivated: card.view.ask()
            }
        }

        Flow {
            width: parent.width
            spacing: 8

            Repeater {
                model: card.view.suggestions

                ActionButton {
                    required property string modelData

                    implicitHeight: 26
                    text: modelData
                    isAvailable: !card.view.isAsking
                    onActivated: card.ask(modelData)
                }
            }
        }

        AssistantWait {
            text: card.view.waitingText
            visible: card.view.isAsking
            onCancelled: {
                card.view.cancel();
                field.forceActiveFocus();
            }
        }

        AnswerCard {
            width: parent.width
            view: card.view
            visible: card.view.hasAnswer && !card.view.isAsking
        }
    }
}
