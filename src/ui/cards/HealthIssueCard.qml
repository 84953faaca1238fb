import QtQuick
import Swabby.Ui

// One health issue. On a page the two explanations stand side by side, in a sheet one below the other.
Item {
    id: root

    property issueCard issue
    property bool isInSheet: false

    signal action

    readonly property bool isWide: !isInSheet && width >= 480
    // Beside the explanations, unless they would get narrow.
    readonly property bool isBeside: isWide && (column.width - button.width - 48) / 2 >= 190
    readonly property real inset: isInSheet ? 14 : 16

    implicitHeight: column.implicitHeight + 28

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

    Column {
        id: column

        x: root.inset
        y: 14
        width: root.width - 2 * root.inset
        spacing: 8

        Row {
            width: parent.width
            spacing: 10

            SymbolItem {
                y: 1
                name: "exclamationmark.triangle.fill"
                color: Theme.marks[root.issue.tint]
                Accessible.role: Accessible.Graphic
                Accessible.name: root.issue.severity
            }

            Paragraph {
                width: parent.width - 26
                text: root.issue.what
                font: Theme.headingFont
                Accessible.role: Accessible.Heading
            }
        }

        Grid {
            id: explanations

            readonly property real columnWidth: root.isWide ? (width - 24) / 2 : width

            width: parent.width - (root.isBeside && button.visible ? button.width + 24 : 0)
            columns: root.isWide ? 2 : 1
            columnSpacing: 24
            rowSpacing: 8

            Explanation {
                width: explanations.columnWidth
                heading: "Why it matters"
                text: root.issue.why
            }

            Explanation {
                width: explanations.columnWidth
                heading: "How to help"
                text: root.issue.how
            }
        }

        Item {
            width: 1
            height: button.height
            visible: button.visible && !root.isBeside
        }
    }

    ActionButton {
        id: button

        x: root.isWide ? root.width - root.inset - width : root.inset
        y: root.height - 14 - height
        width: Math.min(implicitWidth, root.isWide ? 240 : column.width)
        text: root.issue.actionLabel
        isDestructive: root.issue.isDestructive
        visible: root.issue.actionLabel !== ""
        // The same program may be to blame for several issues.
        Accessible.description: root.issue.what
        onActivated: root.action()
    }
}
