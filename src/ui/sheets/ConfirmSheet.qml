pragma ComponentBehavior: Bound
import QtQuick
import Swabby.Ui

// The question before something that cannot simply be taken back. Return is on Cancel's side.
Sheet {
    id: sheet

    required property ConfirmationView confirmation
    readonly property confirmationText question: confirmation.text

    implicitWidth: confirmation.details.count > 0 ? 440 : 380
    headerHeight: 0
    inset: 22
    name: question.title
    onConfirmed: dismissed()

    LetterTile {
        anchors.horizontalCenter: parent.horizontalCenter
        width: 48
        height: 48
        letterFont: Theme.resultFont
        letter: sheet.question.letter
        tileColor: sheet.question.tileColor
        visible: sheet.question.letter !== ""
    }

    Paragraph {
        width: parent.width
        horizontalAlignment: Text.AlignHCenter
        text: sheet.question.title
        font: Theme.titleFont
        Accessible.role: Accessible.Heading
    }

    Paragraph {
        width: parent.width
        horizontalAlignment: Text.AlignHCenter
        text: sheet.question.message
        color: Theme.secondary
    }

    Paragraph {
        width: parent.width
        horizontalAlignment: Text.AlignHCenter
        text: sheet.question.warning
        color: Theme.inks[Tints.red]
        visible: text !== ""
    }

    Row {
        anchors.horizontalCenter: parent.horizontalCenter
        spacing: 8
        visible: sheet.question.recommendation !== ""

        Chip {
            text: sheet.question.recommendation
            tint: sheet.question.recommendationTint
        }

        TrustChip {
            text: sheet.question.trust
        }
    }

    RowStack {
        width: parent.width
        rows: sheet.confirmation.details
        rowHeight: 42
        visible: sheet.confirmation.details.count > 0

        RemovalDetailRow {
            onShown: sheet.confirmation.showInFolder(entry.path)
        }
    }

    footer: Row {
        id: buttons

        width: parent.width
        spacing: 8

        ActionButton {
            width: (buttons.width - 8) / 2
            implicitHeight: 32
            text: "Cancel"
            focus: true
            onActivated: sheet.dismissed()
        }

        ActionButton {
            width: (buttons.width - 8) / 2
            implicitHeight: 32
            text: sheet.question.confirmLabel
            isDestructive: true
            isProminent: true
            onActivated: sheet.confirmation.confirm()
        }
    }
}
