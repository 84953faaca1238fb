pragma ComponentBehavior: Bound
import QtQuick
import Swabby.Ui

// The small panel beside the item in the menu bar.
FloatingPanel {
    id: window

    required property PopoverView view

    isBlended: view.isBlended
    panelHeight: content.height + 28
    title: "Swabby at a glance"

    Connections {
        function onLeft(): void {
            window.close();
        }

        target: window.view
    }

    Shortcut {
        sequences: ["Escape", "Ctrl+W"]
        onActivated: window.close()
    }

    Shortcut {
        sequence: "Ctrl+R"
        onActivated: window.view.refresh()
    }

    Column {
        id: content

        x: 14
        y: 14
        width: parent.width - 28
        spacing: 10
        // Return presses the prominent button where nothing else has the keyboard.
        focus: true
        Keys.onReturnPressed: event => event.isAutoRepeat || window.view.openMainWindow()
        Keys.onEnterPressed: event => event.isAutoRepeat || window.view.openMainWindow()

        PopoverHeader {
            width: parent.width
            view: window.view
        }

        PopoverIssueList {
            width: parent.width
            view: window.view
            visible: window.view.isKnown && !window.view.isHealthy
        }

        Row {
            id: chips

            readonly property int count: window.view.chips.count
            // Figures of one size, so small that the longest fits.
            readonly property real scaling: Math.min(1, ...Array.from(children, child => child.fittingScale ?? 1))

            width: parent.width
            spacing: 6
            visible: count > 0

            Repeater {
                model: window.view.chips

                PopoverChipButton {
                    required property popoverChip entry

                    width: (chips.width - chips.spacing * (chips.count - 1)) / chips.count
                    chip: entry
                    scaling: chips.scaling
                    onActivated: window.view.openSection(entry.section)
                }
            }
        }

        Row {
            id: actions

            width: parent.width
            spacing: 8

            QuietButton {
                id: askButton

                width: Math.round(actions.width * 0.435)
                symbol: "sparkles"
                text: Words.ask
                tip: Words.askHint
                onActivated: window.view.openAskWindow()
            }

            QuietButton {
                width: actions.width - askButton.width - actions.spacing
                symbol: "checkmark.seal"
                text: Words.check
                tip: Words.checkHint
                onActivated: window.view.openCheck()
            }
        }

        ActionButton {
            width: parent.width
            implicitHeight: 32
            text: "Open Swabby"
            isProminent: true
            onActivated: window.view.openMainWindow()
        }

        PopoverFooter {
            width: parent.width
            view: window.view
        }
    }
}
