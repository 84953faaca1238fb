import QtQuick
import Swabby.Ui

ScrollPage {
    id: page

    required property SettingsView view

    Card {
        width: parent.width
        verticalPadding: 6

        SettingRow {
            width: parent.width
            isFirst: true
            label: "Show Swabby in the Dock"
            detail: "While one of its windows is open it always shows there"

            Switch {
                name: "Show Swabby in the Dock"
                isOn: page.view.showInDock
                onActivated: page.view.setSwitch("showInDock", !isOn)
            }
        }

        SettingRow {
            width: parent.width
            label: "Open automatically on login"
            detail: "It starts quietly, without a window"

            Switch {
                name: "Open automatically on login"
                isOn: page.view.opensAtLogin
                onActivated: page.view.setOpensAtLogin(!isOn)
            }
        }

        SettingRow {
            width: parent.width
            label: "Rows in lists"
            detail: "How much room each program gets"

            Segments {
                id: density

                width: 200
                name: "Rows in lists"
                choices: ["Comfortable", "Compact"]
                onCurrentChanged: page.view.setCompact(current === 1)

                // Choosing sets the current one, which would end a plain binding.
                Binding {
                    target: density
                    property: "current"
                    value: page.view.isCompact ? 1 : 0
                    restoreMode: Binding.RestoreNone
                }
            }
        }
    }

    ExcludeList {
        width: parent.width
        view: page.view
    }

    PlainLabel {
        width: parent.width
        horizontalAlignment: Text.AlignHCenter
        text: page.view.about
        font: Theme.hintFont
        color: Theme.secondary
    }
}
