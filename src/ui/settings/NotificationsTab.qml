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
            label: "Notify when attention is needed"
            detail: "One message when your Mac starts struggling"

            Switch {
                name: "Notify when attention is needed"
                isOn: page.view.notifyOnRed
                onActivated: page.view.setSwitch("notifyOnRed", !isOn)
            }
        }

        SettingRow {
            width: parent.width
            label: "Notify when there's a lot to clean up"
            detail: "Looked at every three days at most"

            Switch {
                name: "Notify when there's a lot to clean up"
                isOn: page.view.notifyOnStorage
                onActivated: page.view.setSwitch("notifyOnStorage", !isOn)
            }
        }

        SliderRow {
            width: parent.width
            enabled: page.view.notifyOnStorage
            opacity: enabled ? 1 : 0.5
            setting: page.view.reminder
            onMoved: wanted => page.view.setNumber(setting.key, wanted)
        }
    }

    Card {
        width: parent.width
        spacing: 10

        CardHeading {
            text: "A little quiet"
        }

        Paragraph {
            width: parent.width
            text: page.view.snoozed !== "" ? page.view.snoozed : "Nothing is snoozed. The weekly summary comes either way."
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
                visible: page.view.snoozed !== ""
                onActivated: page.view.endSnooze()
            }
        }
    }
}
