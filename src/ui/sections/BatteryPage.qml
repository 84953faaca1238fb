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

        Row {
            width: parent.width
            spacing: page.battery.isPresent ? 26 : 14

            RingGauge {
                id: ring

                width: page.battery.isPresent ? 82 : 40
                height: width
                fraction: page.battery.fraction
                color: Theme.marks[page.battery.tint]
                trackColor: page.battery.isPresent ? Theme.quietFill : "transparent"

                SymbolPlate {
                    anchors.fill: parent
                    radius: 10
                    symbol: "battery.75"
                    symbolSize: 20
                    visible: !page.battery.isPresent
                }

                Figure {
                    anchors.centerIn: parent
                    text: page.battery.percent
                    font: Theme.figureFont
                }
            }

            Column {
                anchors.verticalCenter: parent.verticalCenter
                width: parent.width - ring.width - parent.spacing
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
                    visible: page.battery.isPresent
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
            emptyText: page.view.state.searchText.trim() === "" ? "Nothing is using noticeable energy right now." : page.view.state.noProcesses
            hasBars: true
        }
    }
}
