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
            setting: page.view.redNotification
            onToggled: page.view.toggle(setting.key)
        }

        SwitchRow {
            width: parent.width
            setting: page.view.storageNotification
            onToggled: page.view.toggle(setting.key)
        }

        SliderRow {
            width: parent.width
            enabled: page.view.storageNotification.isOn
            opacity: enabled ? 1 : 0.5
            setting: page.view.reminder
            onMoved: wanted => page.view.setNumber(setting.key, wanted)
        }

        SwitchRow {
            width: parent.width
            setting: page.view.weekly
            onToggled: page.view.toggle(setting.key)
        }
    }

    PermissionRow {
        width: parent.width
        request: page.view.silenced
        onWanted: what => page.view.openPermissionSettings(what)
    }

    Card {
        width: parent.width
        spacing: 10

        CardHeading {
            text: "A little quiet"
        }

        Paragraph {
            width: parent.width
            text: page.view.snoozed
            color: Theme.secondary
        }

        Row {
            spacing: 8

            ActionButton {
                text: "Snooze 30 minutes"
                onActivated: page.view.snooze(30)
            }

            ActionButton {
                text: "Snooze 2 hours"
                onActivated: page.view.snooze(120)
            }

            ActionButton {
                text: "End snooze"
                visible: page.view.isSnoozed
                onActivated: page.view.endSnooze()
            }
        }
    }
}
