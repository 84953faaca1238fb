pragma ComponentBehavior: Bound
import QtQuick
import Swabby.Ui

// A list of things that can be removed, however long.
RowStack {
    id: stack

    required property RemovableList list
    property string actionLabel
    property var unfolded: []

    signal toggled(string id, bool isSelected)
    signal acted(string id)
    signal quitted(string id)
    signal shown(string path)

    function fold(id: string): void {
        unfolded = unfolded.includes(id) ? unfolded.filter(other => other !== id) : unfolded.concat([id]);
    }

    rows: list.rows
    rowHeight: 52

    RemovableRow {
        actionLabel: stack.actionLabel
        isExpanded: stack.unfolded.includes(entry.id)
        onToggled: stack.toggled(entry.id, !entry.isSelected)
        onActed: stack.acted(entry.id)
        onQuitted: stack.quitted(entry.id)
        onShown: path => stack.shown(path)
        onFolded: stack.fold(entry.id)
    }
}
