pragma ComponentBehavior: Bound
import QtQuick
import Swabby.Ui

ScrollPage {
    id: page

    required property SettingsView view

    Card {
        width: parent.width
        verticalPadding: 6

        Repeater {
            model: page.view.thresholds

            SliderRow {
                required property sliderSetting entry
                required property int index

                width: parent.width
                isFirst: index === 0
                setting: entry
                onMoved: wanted => page.view.setNumber(entry.key, wanted)
            }
        }
    }

    Item {
        width: parent.width
        height: 28

        Remark {
            anchors.left: parent.left
            anchors.right: restore.left
            anchors.rightMargin: 12
            anchors.verticalCenter: parent.verticalCenter
            text: "Changes count from the next check, within a minute."
        }

        ActionButton {
            id: restore

            anchors.right: parent.right
            text: "Restore defaults"
            onActivated: page.view.restoreThresholds()
        }
    }
}
