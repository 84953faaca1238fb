pragma ComponentBehavior: Bound
import QtQuick
import Swabby.Ui

// What is wrong, folded under its verdict.
Item {
    id: list

    required property PopoverView view
    readonly property bool isUnfolded: view.showHealthDetail
    // With very many issues the list scrolls, so that the panel stays on the screen.
    readonly property real unfoldedHeight: Math.min(260, rows.contentHeight)

    implicitHeight: head.height + fold.height

    Rectangle {
        anchors.fill: parent
        radius: 9
        color: Theme.card
        border.width: 1
        border.color: Theme.cardEdge
    }

    Pressable {
        id: head

        width: parent.width
        height: 36
        innerRadius: 9
        name: list.view.healthWord
        Accessible.name: name + ": what's wrong and how to help"
        tip: Words.issuesHint
        Accessible.checkable: true
        Accessible.checked: list.isUnfolded
        onActivated: list.view.showHealthDetail = !list.view.showHealthDetail

        SymbolItem {
            x: 11
            anchors.verticalCenter: parent.verticalCenter
            width: 15
            height: 15
            name: "exclamationmark.triangle.fill"
            color: Theme.marks[list.view.healthTint]
        }

        PlainLabel {
            x: 33
            width: parent.width - 64
            anchors.verticalCenter: parent.verticalCenter
            text: list.view.healthWord
            font: Theme.headingFont
            Accessible.ignored: true
        }

        SymbolItem {
            anchors.right: parent.right
            anchors.rightMargin: 11
            anchors.verticalCenter: parent.verticalCenter
            width: 13
            height: 13
            name: list.isUnfolded ? "chevron.up" : "chevron.down"
            color: Theme.secondary
        }
    }

    Binding {
        target: list.view.issues
        property: "isHeld"
        value: rows.isHeld
    }

    Item {
        id: fold

        y: head.height
        width: parent.width
        height: list.isUnfolded ? list.unfoldedHeight + 5 : 0
        clip: true
        visible: height > 0
        enabled: list.isUnfolded

        Behavior on height {
            NumberAnimation {
                duration: Theme.foldDuration
                easing.type: Easing.InOutQuad
            }
        }

        Hairline {
            x: 11
            width: parent.width - 22
        }

        ScrollPage {
            id: rows

            y: 1
            width: parent.width
            height: parent.height - 1
            padding: 0
            spacing: 0

            Repeater {
                model: list.view.issues

                PopoverIssueRow {
                    required property issueCard entry
                    required property bool isLeaving

                    width: parent.width
                    issue: entry
                    opacity: isLeaving ? 0.45 : 1
                    // Its place among the issues may be another one's by now.
                    onActivated: if (!isLeaving)
                        list.view.openIssue(entry.index)
                }
            }
        }
    }
}
