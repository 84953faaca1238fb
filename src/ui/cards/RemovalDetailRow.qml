import QtQuick
import Swabby.Ui

// One thing behind an item: where it is, and what becomes of it.
Item {
    id: row

    required property removalDetail entry
    property alias hasLine: edge.visible

    signal shown

    implicitHeight: 42
    Accessible.role: Accessible.ListItem
    Accessible.name: entry.name + ", " + entry.fate

    Hairline {
        id: edge
    }

    Column {
        anchors.left: parent.left
        anchors.right: button.left
        anchors.rightMargin: 8
        anchors.verticalCenter: parent.verticalCenter

        NameLabel {
            width: parent.width
            text: row.entry.name
            elide: Text.ElideMiddle
            color: row.entry.stays ? Theme.secondary : Theme.primary
        }

        NameLabel {
            width: parent.width
            text: row.entry.place === "" ? row.entry.fate : row.entry.fate + " · " + row.entry.place
            elide: Text.ElideMiddle
            font: Theme.smallFont
            color: Theme.secondary
        }
    }

    SymbolButton {
        id: button

        anchors.right: parent.right
        anchors.verticalCenter: parent.verticalCenter
        symbol: "folder"
        tip: "Show in folder"
        name: tip + ": " + row.entry.name
        visible: row.entry.path !== ""
        onActivated: row.shown()
    }
}
