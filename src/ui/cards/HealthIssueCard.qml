import QtQuick
import Swabby.Ui

// One health issue, which may be folded to the line that says what it is.
Item {
    id: root

    property issueCard issue
    required property bool isLeaving
    property bool isInSheet: false
    property bool folds: false
    property bool isUnfolded: false
    property bool isFolding: false
    readonly property bool isOpen: !folds || isUnfolded
    readonly property real inset: isInSheet ? 14 : 16
    readonly property real edge: folds ? 10 : 14

    signal action

    implicitHeight: fold.y + fold.height + edge
    opacity: isLeaving ? 0.45 : 1

    Card {
        anchors.fill: parent
        visible: !root.isInSheet
        edge: Theme.marks[root.issue.tint]
    }

    Rectangle {
        anchors.fill: parent
        radius: 12
        color: "transparent"
        border.width: 1
        border.color: Theme.hairline
        visible: root.isInSheet
    }

    Pressable {
        id: head

        width: parent.width
        height: heading.height + 2 * root.edge
        innerRadius: 12
        name: root.issue.severity + ": " + root.issue.what
        tip: root.isLeaving ? Words.noLongerListed : root.isOpen ? "Show less" : "Why it matters and how to help"
        visible: root.folds
        Accessible.checkable: true
        Accessible.checked: root.isOpen
        onActivated: {
            root.isFolding = true;
            root.isUnfolded = !root.isUnfolded;
        }

        SymbolItem {
            anchors.right: parent.right
            anchors.rightMargin: root.inset
            anchors.verticalCenter: parent.verticalCenter
            width: 13
            height: 13
            name: root.isOpen ? "chevron.up" : "chevron.down"
            color: head.isHovered ? Theme.primary : Theme.secondary
        }
    }

    SymbolItem {
        x: root.inset
        y: root.edge + 1
        name: root.isLeaving ? "checkmark.circle.fill" : "exclamationmark.triangle.fill"
        color: root.isLeaving ? Theme.marks[Tints.green] : Theme.marks[root.issue.tint]
        Accessible.role: Accessible.Graphic
        Accessible.name: root.isLeaving ? Words.noLongerListed : root.issue.severity
        Accessible.ignored: root.folds
    }

    Paragraph {
        id: heading

        x: root.inset + 26
        y: root.edge
        width: root.width - x - root.inset - (root.folds ? 24 : 0)
        text: root.issue.what
        font: Theme.headingFont
        Accessible.role: Accessible.Heading
        Accessible.ignored: root.folds
    }

    Item {
        id: fold

        x: root.inset
        y: heading.y + heading.height
        width: root.width - 2 * root.inset
        height: root.isOpen ? body.height + 8 : 0
        clip: root.folds
        visible: height > 0
        enabled: root.isOpen

        Behavior on height {
            enabled: root.isFolding

            NumberAnimation {
                duration: Theme.foldDuration
                easing.type: Easing.InOutQuad
            }
        }

        IssueBody {
            id: body

            y: 8
            width: parent.width
            height: implicitHeight
            issue: root.issue
            isInSheet: root.isInSheet
            // Its place among the issues may be another one's by now.
            onAction: if (!root.isLeaving)
                root.action()
        }
    }
}
