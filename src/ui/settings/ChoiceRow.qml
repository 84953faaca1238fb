import QtQuick
import Swabby.Ui

SettingRow {
    id: row

    property alias choices: segments.choices
    property int current: 0

    signal chosen(int index)

    Segments {
        id: segments

        width: Math.min(100 * choices.length, 240)
        name: row.label
        onCurrentChanged: row.chosen(current)

        // Choosing sets the current one, which would end a plain binding.
        Binding {
            target: segments
            property: "current"
            value: row.current
            restoreMode: Binding.RestoreNone
        }
    }
}
