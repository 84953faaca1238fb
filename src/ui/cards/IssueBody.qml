import QtQuick
import Swabby.Ui

// Why an issue matters, how to help, and the button that does. On a page the two explanations stand side by side,
// in a sheet one below the other.
Item {
    id: body

    required property issueCard issue
    property bool isInSheet: false

    signal action

    // On a page one card offers to quit a program, however many tell of it.
    readonly property bool hasButton: issue.actionLabel !== "" && (isInSheet || !issue.isOfferedAbove)
    readonly property bool isWide: !isInSheet && width >= 448
    // Beside the explanations, unless they would get narrow.
    readonly property bool isBeside: isWide && (width - button.width - 48) / 2 >= 190

    implicitHeight: isBeside || !hasButton ? explanations.height : explanations.height + 8 + button.height

    Grid {
        id: explanations

        readonly property real columnWidth: body.isWide ? (width - 24) / 2 : width

        width: body.width - (body.isBeside && body.hasButton ? button.width + 24 : 0)
        columns: body.isWide ? 2 : 1
        columnSpacing: 24
        rowSpacing: 8

        Explanation {
            width: explanations.columnWidth
            heading: "Why it matters"
            text: body.issue.why
        }

        Explanation {
            width: explanations.columnWidth
            heading: "How to help"
            text: body.issue.how
        }
    }

    ActionButton {
        id: button

        x: body.isWide ? body.width - width : 0
        y: body.height - height
        width: Math.min(implicitWidth, body.isWide ? 240 : body.width)
        text: body.issue.actionLabel
        isDestructive: body.issue.isDestructive
        visible: body.hasButton
        // The same program may be to blame for several issues.
        Accessible.description: body.issue.what
        onActivated: body.action()
    }
}
