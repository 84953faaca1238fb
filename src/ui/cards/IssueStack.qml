pragma ComponentBehavior: Bound
import QtQuick
import Swabby.Ui

// What is wrong: the first of it open, of the others a line each that unfolds.
Column {
    id: stack

    required property MainWindowView view
    required property RowModel issues

    spacing: 12
    visible: issues.count > 0

    Repeater {
        model: stack.issues

        HealthIssueCard {
            required property issueCard entry
            required property int index

            width: stack.width
            issue: entry
            folds: index > 0
            onAction: stack.view.performIssue(entry.index)
        }
    }
}
