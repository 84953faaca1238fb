import QtQuick
import Swabby.Ui

// Who speaks, and the verdict in a word.
Column {
    id: header

    required property PopoverView view

    spacing: 8

    Item {
        width: parent.width
        height: 26

        Logo {
            id: logo

            anchors.verticalCenter: parent.verticalCenter
        }

        PlainLabel {
            anchors.left: logo.right
            anchors.leftMargin: 8
            anchors.verticalCenter: parent.verticalCenter
            text: "Swabby"
            font: Theme.nameFont
            Accessible.role: Accessible.Heading
        }

        Pressable {
            id: capsule

            anchors.right: parent.right
            anchors.verticalCenter: parent.verticalCenter
            width: verdict.width
            height: 24
            innerRadius: 12
            name: header.view.healthWord
            tip: Words.issuesHint
            visible: header.view.isKnown
            opacity: isPressed ? 0.75 : 1
            onActivated: header.view.isHealthy ? header.view.openMainWindow() : header.view.showHealthDetail = !header.view.showHealthDetail

            Rectangle {
                id: verdict

                width: Math.ceil(word.implicitWidth) + 20
                height: 22
                anchors.verticalCenter: parent.verticalCenter
                radius: 11
                color: Theme.washes[header.view.healthTint]
                border.width: capsule.isHovered ? 1 : 0
                border.color: Theme.inks[header.view.healthTint]

                PlainLabel {
                    id: word

                    anchors.centerIn: parent
                    text: header.view.healthWord
                    font: Theme.smallHeadingFont
                    color: Theme.inks[header.view.healthTint]
                    Accessible.ignored: true
                }
            }
        }
    }

    Row {
        width: parent.width
        spacing: 6
        visible: header.view.isFirstRun

        SymbolItem {
            y: 2
            width: 10.5
            height: 10.5
            name: "info.circle"
            color: Theme.secondary
        }

        Paragraph {
            width: parent.width - 17
            text: Words.newHere
            font: Theme.hintFont
            color: Theme.secondary
        }
    }
}
