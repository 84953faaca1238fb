import QtQuick
import Swabby.Ui

ScrollPage {
    id: page

    required property SettingsView view

    Card {
        width: parent.width
        verticalPadding: 6

        SwitchRow {
            width: parent.width
            isFirst: true
            visible: page.view.hasDock
            setting: page.view.dock
            onToggled: page.view.toggle(setting.key)
        }

        SwitchRow {
            width: parent.width
            isFirst: !page.view.hasDock
            setting: page.view.login
            onToggled: page.view.toggleLogin()
        }

        SettingRow {
            id: rows

            width: parent.width
            label: "Rows in lists"
            detail: "How much room each program gets"

            Segments {
                id: density

                width: 200
                name: rows.label
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

    CenteredLabel {
        text: page.view.about
        font: Theme.hintFont
    }
}
