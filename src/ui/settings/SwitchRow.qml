import QtQuick
import Swabby.Ui

SettingRow {
    id: row

    property switchSetting setting

    signal toggled

    label: setting.label
    detail: setting.detail

    Switch {
        name: row.setting.label
        isOn: row.setting.isOn
        onActivated: row.toggled()
    }
}
