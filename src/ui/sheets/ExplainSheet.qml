import QtQuick
import Swabby.Ui

// What something is, and whether it is safe to do without.
Sheet {
    id: sheet

    required property MainWindowView view
    readonly property ExplainView explanation: sheet.view.coordinator.explanation
    readonly property explainText subject: explanation.subject

    implicitWidth: 420
    inset: 22
    headerHeight: 40
    name: Words.explain + " " + subject.name
    onConfirmed: dismissed()

    header: [
        AppIcon {
            id: tile

            anchors.verticalCenter: parent.verticalCenter
            width: 40
            height: 40
            letterFont: Theme.titleFont
            tile: sheet.subject.tile
        },
        Column {
            anchors.left: tile.right
            anchors.leftMargin: 12
            anchors.right: close.left
            anchors.verticalCenter: parent.verticalCenter

            NameLabel {
                width: parent.width
                text: sheet.subject.name
                font: Theme.titleFont
                Accessible.role: Accessible.Heading
            }

            Remark {
                width: parent.width
                text: sheet.subject.alias === "" ? Words.explain : sheet.subject.alias + " · " + Words.explain
            }
        },
        SymbolButton {
            id: close

            anchors.right: parent.right
            anchors.verticalCenter: parent.verticalCenter
            symbol: "xmark"
            symbolSize: 16
            tip: "Close"
            onActivated: sheet.dismissed()
        }
    ]

    AssistantWait {
        text: sheet.explanation.waitingText
        visible: sheet.explanation.isLoading
        onCancelled: sheet.explanation.cancel()
    }

    Paragraph {
        width: parent.width
        text: sheet.explanation.text
        visible: text !== "" && !sheet.explanation.isLoading
    }

    AssistantTroubleNote {
        width: parent.width
        trouble: sheet.explanation.trouble
        visible: trouble.reason !== "" && !sheet.explanation.isLoading
        onRetried: sheet.explanation.loadAgain()
        onSettingsWanted: sheet.explanation.openAssistantSettings()
    }

    Row {
        spacing: 8

        Chip {
            text: sheet.subject.recommendation
            tint: sheet.subject.recommendationTint
        }

        TrustChip {
            text: sheet.subject.trust
            symbol: sheet.subject.trustSymbol
        }
    }

    FactsCard {
        width: parent.width
        facts: sheet.explanation.facts
    }

    Hairline {
    }

    footer: [
        Paragraph {
            anchors.left: parent.left
            anchors.right: buttons.left
            anchors.rightMargin: 12
            anchors.verticalCenter: parent.verticalCenter
            text: sheet.explanation.note
            font: Theme.axisFont
            color: Theme.secondary
        },
        Row {
            id: buttons

            anchors.right: parent.right
            anchors.verticalCenter: parent.verticalCenter
            spacing: 8

            ActionButton {
                text: sheet.subject.actionLabel
                tip: sheet.subject.actionHint
                visible: text !== ""
                onActivated: sheet.explanation.act()
            }

            ActionButton {
                text: "Done"
                isProminent: true
                onActivated: sheet.dismissed()
            }
        }
    ]
}
