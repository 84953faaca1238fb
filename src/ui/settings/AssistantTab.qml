import QtQuick
import Swabby.Ui

ScrollPage {
    id: page

    required property SettingsView view

    function save(): void {
        page.view.key.save(field.content);
        field.clear();
    }

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

    Card {
        width: parent.width
        spacing: 10

        CardHeading {
            text: "Your own key"
        }

        Note {
            width: parent.width
            text: "With an Anthropic API key of yours, questions go straight there. The key is kept with your passwords and never shown again."
        }

        Row {
            id: entry

            width: parent.width
            spacing: 8

            TextField {
                id: field

                width: entry.width - saveButton.width - (removeButton.visible ? removeButton.width + 8 : 0) - 8
                implicitHeight: 28
                name: "API key"
                placeholder: page.view.key.placeholder
                echoMode: TextInput.Password
                onAccepted: page.save()
            }

            ActionButton {
                id: saveButton

                text: "Save key"
                isProminent: field.content !== ""
                isBusy: page.view.key.isBusy
                onActivated: page.save()
            }

            ActionButton {
                id: removeButton

                text: "Remove key"
                isBusy: page.view.key.isBusy
                visible: page.view.key.isStored
                onActivated: page.view.key.remove()
            }
        }

        Row {
            width: parent.width
            spacing: 8
            visible: page.view.key.sentence !== ""

            SymbolItem {
                y: 1
                name: page.view.key.isStored ? "checkmark.circle.fill" : "key"
                color: page.view.key.isStored ? Theme.marks[Tints.green] : Theme.secondary
                visible: !page.view.key.isBusy
            }

            Spinner {
                visible: page.view.key.isBusy
            }

            Note {
                width: parent.width - 24
                text: page.view.key.sentence
            }
        }
    }
}
