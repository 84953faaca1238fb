pragma ComponentBehavior: Bound
import QtQuick
import Swabby.Ui

// A list of things that can be removed, and the way to the rest of a long one.
Column {
    id: rows

    required property RemovableList list
    property string actionLabel

    signal toggled(string id, bool isSelected)
    signal acted(string id)
    signal shown(string path)

    Repeater {
        model: rows.list.rows

        RemovableRow {
            actionLabel: rows.actionLabel
            onToggled: rows.toggled(entry.id, !entry.isSelected)
            onActed: rows.acted(entry.id)
            onShown: path => rows.shown(path)
        }
    }

    Item {
        width: parent.width
        height: 44
        visible: rows.list.moreLabel !== ""

        Hairline {
            width: parent.width
        }

        ActionButton {
            anchors.centerIn: parent
            text: rows.list.moreLabel
            onActivated: rows.list.showMore()
        }
    }
}
