import QtQuick
import Swabby.Ui

// One browser's many processes in one line.
Item {
    id: row

    required property browserRowText entry
    required property bool isLeaving

    implicitHeight: 56
    opacity: isLeaving ? 0.45 : 1
    Accessible.role: Accessible.ListItem
    Accessible.name: entry.name + ", " + entry.detail + ", " + entry.memory + ", " + entry.load

    SymbolItem {
        id: globe

        anchors.verticalCenter: parent.verticalCenter
        width: 22
        height: 22
        name: "globe"
        color: Theme.accent
    }

    Column {
        anchors.left: globe.right
        anchors.leftMargin: 12
        anchors.right: memory.left
        anchors.rightMargin: 12
        anchors.verticalCenter: parent.verticalCenter

        NameLabel {
            width: parent.width
            text: row.entry.name
        }

        Remark {
            width: parent.width
            text: row.isLeaving ? Words.noLongerListed : row.entry.detail
        }
    }

    Figure {
        id: memory

        anchors.right: load.left
        anchors.rightMargin: 12
        anchors.verticalCenter: parent.verticalCenter
        text: row.entry.memory
        font: Theme.headingFont
    }

    Figure {
        id: load

        anchors.right: parent.right
        anchors.verticalCenter: parent.verticalCenter
        width: 84
        horizontalAlignment: Text.AlignRight
        text: row.entry.load
        color: Theme.secondary
    }
}
