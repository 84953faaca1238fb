pragma ComponentBehavior: Bound
import QtQuick
import Swabby.Ui

// Everything that runs, busiest first, or browser by browser.
ScrollPage {
    id: page

    required property MainWindowView view

    Repeater {
        model: page.view.state.speedIssues

        HealthIssueCard {
            required property issueCard entry

            width: parent.width
            issue: entry
            onAction: page.view.performIssue(entry.index)
        }
    }

    Card {
        width: parent.width
        spacing: 8

        Item {
            width: parent.width
            height: 28

            Segments {
                name: "Running apps"
                choices: ["Busiest", "By Browser"]
                current: page.view.speedView
                onCurrentChanged: page.view.speedView = current
            }

            ProcessSearchField {
                anchors.right: parent.right
                width: Math.min(220, parent.width - 256)
                view: page.view
                visible: page.view.speedView === 0
            }
        }

        ProcessListView {
            width: parent.width
            view: page.view
            rows: page.view.state.processes
            emptyText: "No processes found."
            visible: page.view.speedView === 0
        }

        Column {
            width: parent.width
            visible: page.view.speedView === 1

            PlainLabel {
                width: parent.width
                bottomPadding: 4
                text: "Browser memory usage across all open tabs."
                font: Theme.smallFont
                color: Theme.secondary
            }

            Repeater {
                model: page.view.state.browsers

                BrowserRow {
                    required property int index

                    width: parent.width

                    Hairline {
                        width: parent.width
                        visible: parent.index > 0
                    }
                }
            }

            PlainLabel {
                width: parent.width
                topPadding: 12
                bottomPadding: 12
                horizontalAlignment: Text.AlignHCenter
                text: "No active browsers."
                color: Theme.secondary
                visible: page.view.state.browsers.count === 0
            }
        }
    }
}
