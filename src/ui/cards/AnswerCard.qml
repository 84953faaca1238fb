import QtQuick
import Swabby.Ui

// What the assistant said, and what it offers to do.
Card {
    id: card

    required property AskView view

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

    Item {
        width: parent.width
        height: Math.max(note.height, button.visible ? button.height : 0)
        visible: note.text !== "" || button.visible

        Paragraph {
            id: note

            anchors.left: parent.left
            anchors.right: button.visible ? button.left : parent.right
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
            visible: text !== ""
            onActivated: card.view.quitApp()
        }
    }

    Paragraph {
        width: parent.width
        text: card.view.notice
        font: Theme.smallFont
        color: Theme.secondary
        visible: text !== ""
    }
}
