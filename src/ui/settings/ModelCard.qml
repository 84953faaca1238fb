pragma ComponentBehavior: Bound
import QtQuick
import Swabby.Ui

// Which model is asked, and where.
Card {
    id: card

    required property SettingsView view

    component Entry: Column {
        id: entry

        required property textSetting setting

        width: parent === null ? 0 : parent.width
        spacing: 4

        Remark {
            text: entry.setting.label
        }

        TextField {
            id: field

            width: parent.width
            implicitHeight: 28
            name: entry.setting.label
            placeholder: entry.setting.placeholder
            onAccepted: card.view.setText(entry.setting.key, content)
            onActiveFocusChanged: if (!activeFocus && !isMenuOpen && content !== entry.setting.value)
                card.view.setText(entry.setting.key, content)

            // Typing ends a plain binding.
            Binding {
                target: field
                property: "content"
                value: entry.setting.value
                restoreMode: Binding.RestoreNone
            }
        }
    }

    spacing: 10

    CardHeading {
        text: "Model and address"
    }

    Note {
        width: parent.width
        text: "Leave both empty for the built-in ones. A model on this computer needs only its address here, and no key."
    }

    Entry {
        setting: card.view.model
    }

    Entry {
        setting: card.view.address
    }
}
