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
            setting: page.view.assistant
            onToggled: page.view.toggle(setting.key)
        }
    }

    KeyCard {
        width: parent.width
        key: page.view.key
    }

    ModelCard {
        width: parent.width
        view: page.view
    }

    Card {
        width: parent.width
        spacing: 8

        CardHeading {
            text: "What is sent, and when"
        }

        Note {
            width: parent.width
            text: page.view.whatIsSent
        }
    }
}
