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

        ChoiceRow {
            width: parent.width
            label: "Rows in lists"
            detail: "How much room each program gets"
            choices: ["Comfortable", "Compact"]
            current: page.view.isCompact ? 1 : 0
            onChosen: index => page.view.setCompact(index === 1)
        }

        ChoiceRow {
            width: parent.width
            label: "Appearance"
            detail: "System follows the desktop"
            choices: ["System", "Light", "Dark"]
            current: page.view.theme
            onChosen: index => page.view.setTheme(index)
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
