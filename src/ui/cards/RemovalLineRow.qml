import QtQuick
import Swabby.Ui

// A line of the question before a removal: an item that unfolds, or one of the things behind it.
Item {
    id: line

    required property removalLine entry

    signal folded
    signal shown

    implicitHeight: entry.isItem ? 52 : detail.implicitHeight

    // The list has an edge of its own.
    Hairline {
        visible: line.y > 0 && !line.entry.isInGroup
    }

    Pressable {
        id: head

        anchors.fill: parent
        anchors.topMargin: 1
        name: (line.entry.isUnfolded ? "Hide what is behind it" : "Show what is behind it") + ": " + line.entry.title
        Accessible.description: line.entry.size + ", " + line.entry.note
        visible: line.entry.isItem
        onActivated: line.folded()

        SymbolItem {
            anchors.verticalCenter: parent.verticalCenter
            width: 12
            height: 12
            name: line.entry.isUnfolded ? "chevron.down" : "chevron.right"
            color: Theme.secondary
        }

        Column {
            anchors.left: parent.left
            anchors.leftMargin: 24
            anchors.right: size.left
            anchors.rightMargin: 12
            anchors.verticalCenter: parent.verticalCenter
            spacing: 1

            NameLabel {
                width: parent.width
                text: line.entry.title
                elide: Text.ElideMiddle
            }

            NameLabel {
                width: parent.width
                text: line.entry.note
                font: Theme.smallFont
                color: line.entry.isForGood ? Theme.inks[Tints.red] : Theme.secondary
            }
        }

        Figure {
            id: size

            anchors.right: parent.right
            anchors.verticalCenter: parent.verticalCenter
            text: line.entry.size
            color: Theme.secondary
        }
    }

    RemovalDetailRow {
        id: detail

        anchors.left: parent.left
        anchors.leftMargin: line.entry.isInGroup ? 24 : 0
        anchors.right: parent.right
        entry: line.entry.detail
        hasLine: false
        visible: !line.entry.isItem
        onShown: line.shown()
    }
}
