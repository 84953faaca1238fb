pragma ComponentBehavior: Bound
import QtQuick
import Swabby.Ui

// The question before something that cannot simply be taken back. Return is on Cancel's side.
Sheet {
    id: sheet

    required property ConfirmationView confirmation
    readonly property confirmationText question: confirmation.text
    readonly property bool isRemoval: confirmation.lines.count > 0

    implicitWidth: isRemoval ? 440 : 380
    headerHeight: 0
    inset: 22
    name: question.title
    onConfirmed: dismissed()

    component Sentence: Paragraph {
        width: parent === null ? 0 : parent.width
        horizontalAlignment: sheet.isRemoval ? Text.AlignLeft : Text.AlignHCenter
    }

    AppIcon {
        anchors.horizontalCenter: parent.horizontalCenter
        width: 48
        height: 48
        letterFont: Theme.resultFont
        tile: sheet.question.tile
        visible: sheet.question.tile.letter !== ""
    }

    Sentence {
        text: sheet.question.title
        font: Theme.titleFont
        Accessible.role: Accessible.Heading
    }

    Sentence {
        text: sheet.question.message
        color: Theme.secondary
    }

    Sentence {
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
            symbol: sheet.question.trustSymbol
        }
    }

    Item {
        width: parent.width
        implicitHeight: lines.height + 2
        visible: sheet.isRemoval

        Rectangle {
            anchors.fill: parent
            radius: 10
            color: "transparent"
            border.width: 1
            border.color: Theme.hairline
        }

        RowStack {
            id: lines

            x: 12
            y: 1
            width: parent.width - 24
            rows: sheet.confirmation.lines
            rowHeight: 52

            RemovalLineRow {
                onFolded: {
                    sheet.keepsTop = true;
                    sheet.confirmation.fold(entry.item);
                }
                onShown: sheet.confirmation.showInFolder(entry.detail.path)
            }
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
