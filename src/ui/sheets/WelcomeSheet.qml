pragma ComponentBehavior: Bound
import QtQuick
import Swabby.Ui

// The first run's introduction.
Sheet {
    id: sheet

    required property MainWindowView view

    implicitWidth: 440
    headerHeight: 0
    inset: 26
    name: "Welcome to Swabby"
    onConfirmed: dismissed()

    Item {
        width: 1
        height: 6
    }

    Logo {
        anchors.horizontalCenter: parent.horizontalCenter
        width: 56
        height: 56
    }

    Column {
        width: parent.width
        spacing: 4

        Paragraph {
            width: parent.width
            horizontalAlignment: Text.AlignHCenter
            text: sheet.name
            font: Theme.resultFont
            Accessible.role: Accessible.Heading
        }

        Paragraph {
            width: parent.width
            horizontalAlignment: Text.AlignHCenter
            text: Words.welcome
            color: Theme.secondary
        }
    }

    Column {
        width: parent.width
        topPadding: 12
        bottomPadding: 6
        spacing: 16

        Repeater {
            model: sheet.view.welcomePoints

            Row {
                id: point

                required property welcomePoint modelData

                x: 6
                width: parent.width - 12
                spacing: 14

                SymbolPlate {
                    width: 36
                    height: 36
                    anchors.verticalCenter: parent.verticalCenter
                    radius: 9
                    symbol: point.modelData.symbol
                    ink: Theme.inks[Tints.accent]
                }

                Explanation {
                    width: point.width - 50
                    anchors.verticalCenter: parent.verticalCenter
                    heading: point.modelData.heading
                    headingFont: Theme.headingFont
                    headingColor: Theme.primary
                    text: point.modelData.text
                    textFont: Theme.bodyFont
                    textColor: Theme.secondary
                }
            }
        }
    }

    footer: ActionButton {
        width: parent.width
        implicitHeight: 34
        text: "Get started"
        isProminent: true
        focus: true
        onActivated: sheet.dismissed()
    }
}
