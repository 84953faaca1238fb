import QtQuick
import Swabby.Ui

// What the full check found, in a sentence or two.
Card {
    id: card

    required property CheckView check

    spacing: 6

    Row {
        width: parent.width
        spacing: 8

        SymbolItem {
            id: mark

            anchors.verticalCenter: parent.verticalCenter
            name: "checkmark.circle.fill"
            color: Theme.marks[Tints.green]
        }

        PlainLabel {
            id: complete

            anchors.verticalCenter: parent.verticalCenter
            text: "Check complete"
            font: Theme.buttonFont
            color: Theme.inks[Tints.green]
            Accessible.role: Accessible.Heading
        }

        Remark {
            anchors.verticalCenter: parent.verticalCenter
            width: parent.width - mark.width - complete.width - 16
            horizontalAlignment: Text.AlignRight
            text: card.check.removedSince
        }
    }

    Paragraph {
        width: parent.width
        text: card.check.headline
        font: Theme.resultFont
        Accessible.role: Accessible.Heading
    }

    Paragraph {
        width: parent.width
        // A number stays beside what it counts.
        text: card.check.summary.replace(/(\d) (?=\w)/g, "$1\u00a0").replace(/(startup) (items?)/g, "$1\u00a0$2")
        Accessible.name: card.check.summary
        color: Theme.secondary
        visible: text !== ""
    }

    HealthAllClearRow {
        width: parent.width
        topPadding: 4
        text: Words.nothingToDo
        visible: card.check.isAllClear
    }

    AssistantTroubleNote {
        width: parent.width
        topPadding: 6
        trouble: card.check.trouble
        onRetried: card.check.run()
        onSettingsWanted: card.check.openAssistantSettings()
    }

    Paragraph {
        width: parent.width
        topPadding: 2
        text: card.check.sentNote
        font: Theme.axisFont
        color: Theme.secondary
        visible: text !== ""
    }
}
