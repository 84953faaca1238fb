pragma ComponentBehavior: Bound
import QtQuick
import Swabby.Ui

// What is wrong, why it matters and how to help, issue by issue.
Sheet {
    id: sheet

    required property MainWindowView view

    name: sheet.view.state.healthWord
    onConfirmed: dismissed()

    header: [
        Rectangle {
            width: word.implicitWidth + 20
            height: 26
            radius: 13
            anchors.verticalCenter: parent.verticalCenter
            color: Theme.washes[sheet.view.state.healthTint]

            PlainLabel {
                id: word

                anchors.centerIn: parent
                text: sheet.view.state.healthWord
                font: Theme.buttonFont
                color: Theme.inks[sheet.view.state.healthTint]
            }
        },
        SymbolButton {
            anchors.right: parent.right
            anchors.verticalCenter: parent.verticalCenter
            symbol: "xmark"
            symbolSize: 20
            tip: "Close"
            onActivated: sheet.dismissed()
        }
    ]

    Repeater {
        model: sheet.view.state.issues

        HealthIssueCard {
            required property issueCard entry

            width: parent.width
            issue: entry
            isInSheet: true
            onAction: sheet.view.performIssue(entry.index)
        }
    }

    HealthAllClearRow {
        width: parent.width
        text: Words.allIsWell
        visible: sheet.view.state.issues.count === 0
    }

    footer: ActionButton {
        anchors.fill: parent
        text: "Done"
        isProminent: true
        onActivated: sheet.dismissed()
    }
}
