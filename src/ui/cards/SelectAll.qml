import QtQuick
import Swabby.Ui

// Ticks every box of a list, or none. Both stand there whatever is ticked, so that nothing moves.
Row {
    id: controls

    required property RemovableList list
    property string subject

    signal wanted(bool isSelected)

    // The one that was pressed rests afterwards; the keyboard goes on with the other.
    function choose(isSelected: bool, pressed: Item, other: Item): void {
        const hadKeyboard = pressed.activeFocus;
        wanted(isSelected);
        if (hadKeyboard && other.enabled)
            other.forceActiveFocus(Qt.TabFocusReason);
    }

    visible: list.rows.count > 0

    LinkButton {
        id: all

        text: "Select all"
        name: text + ": " + controls.subject
        isAvailable: controls.list.selectedCount < controls.list.rows.count
        onActivated: controls.choose(true, all, none)
    }

    LinkButton {
        id: none

        text: "None"
        name: "Select none: " + controls.subject
        isAvailable: controls.list.selectedCount > 0
        onActivated: controls.choose(false, none, all)
    }
}
