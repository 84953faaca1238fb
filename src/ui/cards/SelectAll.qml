import QtQuick
import Swabby.Ui

// Ticks every box of a list, or none. Both stand there whatever is ticked, so that nothing moves.
Row {
    id: controls

    required property RemovableList list
    property string subject

    signal wanted(bool isSelected)

    visible: list.rows.count > 0

    LinkButton {
        text: "Select all"
        name: text + ": " + controls.subject
        isAvailable: controls.list.selectedCount < controls.list.rows.count
        onActivated: controls.wanted(true)
    }

    LinkButton {
        text: "None"
        name: "Select none: " + controls.subject
        isAvailable: controls.list.selectedCount > 0
        onActivated: controls.wanted(false)
    }
}
