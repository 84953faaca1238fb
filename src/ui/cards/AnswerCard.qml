import QtQuick
import Swabby.Ui

// What the assistant said, and what it offers to do.
Card {
    id: card

    required property AskView view
    // What is inside an invisible item is not visible itself, so the item cannot ask it.
    readonly property bool hasOffer: view.quitLabel !== ""

    spacing: 12

    ScrollPage {
        width: parent.width
        height: Math.min(260, contentHeight)
        padding: 0

        Paragraph {
            width: parent.width
            text: card.view.explanation
            lineHeight: 1.25
        }
    }

    AssistantTroubleNote {
        width: parent.width
        trouble: card.view.trouble
        onRetried: card.view.askAgain()
        onSettingsWanted: card.view.openAssistantSettings()
    }

    Item {
        width: parent.width
        height: Math.max(note.height, card.hasOffer ? button.height : 0)
        visible: card.view.note !== "" || card.hasOffer

        Paragraph {
            id: note

            anchors.left: parent.left
            anchors.right: card.hasOffer ? button.left : parent.right
            anchors.rightMargin: 12
            anchors.verticalCenter: parent.verticalCenter
            text: card.view.note
            font: Theme.hintFont
            color: Theme.secondary
        }

        ActionButton {
            id: button

            anchors.right: parent.right
            anchors.verticalCenter: parent.verticalCenter
            width: Math.min(implicitWidth, 190)
            implicitHeight: 26
            text: card.view.quitLabel
            isDestructive: true
            visible: card.hasOffer
            onActivated: card.view.quitApp()
        }
    }

    Note {
        width: parent.width
        text: card.view.notice
        visible: text !== ""
    }
}
