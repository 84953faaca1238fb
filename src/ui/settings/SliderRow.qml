import QtQuick
import Swabby.Ui

SettingRow {
    id: row

    property sliderSetting setting

    signal moved(real wanted)

    label: setting.label
    detail: setting.detail

    Slider {
        width: 170
        name: row.setting.label
        stops: row.setting.stops
        figure: row.setting.value
        valueText: row.setting.valueText
        fillColor: Theme.marks[row.setting.tint]
        onMoved: wanted => row.moved(wanted)
    }

    PlainLabel {
        x: 178
        width: 56
        height: 24
        horizontalAlignment: Text.AlignRight
        verticalAlignment: Text.AlignVCenter
        text: row.setting.valueText
        font: Theme.headingFont
    }
}
