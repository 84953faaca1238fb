pragma ComponentBehavior: Bound
import QtQuick
import Swabby.Ui

// Everything that runs, busiest first, or browser by browser.
ScrollPage {
    id: page

    required property MainWindowView view

    remedy: list

    IssueStack {
        width: parent.width
        view: page.view
        issues: page.view.state.speedIssues
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
                onCurrentChanged: page.view.speedView = current

                // An issue that leads to the list of programs chooses too.
                Binding on current {
                    value: page.view.speedView
                }
            }

            ProcessSearchField {
                anchors.right: parent.right
                width: Math.min(220, parent.width - 256)
                view: page.view
                visible: page.view.speedView === 0
            }
        }

        ProcessListView {
            id: list

            width: parent.width
            view: page.view
            rows: page.view.state.processes
            emptyText: page.view.state.noProcesses
            visible: page.view.speedView === 0
        }

        CenteredLabel {
            topPadding: 4
            bottomPadding: 4
            text: page.view.state.moreFound
            visible: text !== "" && page.view.speedView === 0
        }

        Column {
            width: parent.width
            visible: page.view.speedView === 1

            Remark {
                width: parent.width
                bottomPadding: 4
                text: "Browser memory usage across all open tabs."
            }

            Repeater {
                model: page.view.state.browsers

                BrowserRow {
                    required property int index

                    width: parent.width

                    Hairline {
                        visible: parent.index > 0
                    }
                }
            }

            CenteredLabel {
                topPadding: 12
                bottomPadding: 12
                text: "No active browsers."
                visible: page.view.state.browsers.count === 0
            }
        }
    }
}
