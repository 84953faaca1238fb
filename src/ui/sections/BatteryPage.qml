pragma ComponentBehavior: Bound
import QtQuick
import Swabby.Ui

// How the battery is, and what drains it.
ScrollPage {
    id: page

    required property MainWindowView view
    readonly property batterySummary battery: view.state.battery

    Card {
        width: parent.width
        visible: page.battery.isPresent

        Row {
            spacing: 26

            RingGauge {
                id: ring

                width: 82
                height: 82
                fraction: page.battery.fraction
                color: Theme.marks[page.battery.tint]
                trackColor: Theme.quietFill

                Figure {
                    anchors.centerIn: parent
                    text: page.battery.percent
                    font: Theme.figureFont
                }
            }

            Column {
                anchors.verticalCenter: parent.verticalCenter
                width: page.width - 40 - 32 - ring.width - 26
                spacing: 3

                PlainLabel {
                    width: parent.width
                    text: page.battery.headline
                    font: Theme.titleFont
                    Accessible.role: Accessible.Heading
                }

                PlainLabel {
                    width: parent.width
                    text: page.battery.condition
                    color: Theme.secondary
                    visible: text !== ""
                }

                Row {
                    topPadding: 7
                    spacing: 34

                    Repeater {
                        model: page.battery.facts

                        Column {
                            id: factColumn

                            required property fact modelData

                            Remark {
                                text: factColumn.modelData.label
                            }

                            PlainLabel {
                                text: factColumn.modelData.value
                                font: Theme.headingFont
                            }
                        }
                    }
                }
            }
        }
    }

    Card {
        width: parent.width
        spacing: 4

        Item {
            width: parent.width
            height: 28

            CardHeading {
                anchors.verticalCenter: parent.verticalCenter
                text: page.battery.drainersHeading
            }

            ProcessSearchField {
                anchors.right: parent.right
                width: Math.min(220, parent.width - 256)
                view: page.view
            }
        }

        ProcessListView {
            width: parent.width
            view: page.view
            rows: page.view.state.drainers
            emptyText: "Nothing is using noticeable energy right now."
            hasBars: true
        }
    }
}
