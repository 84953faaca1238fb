import QtQuick
import Swabby.Ui

Item {
    id: row

    property sectionRow section
    property bool isSelected: false
    property bool hasKeyboard: false

    signal chosen

    implicitHeight: 30
    Accessible.role: Accessible.ListItem
    Accessible.name: section.title
    Accessible.selectable: true
    Accessible.selected: isSelected
    Accessible.onPressAction: if (enabled)
        chosen()

    Rectangle {
        anchors.fill: parent
        radius: 7
        color: row.isSelected ? Theme.accentFill : area.containsMouse ? Theme.quietFill : "transparent"
    }

    SymbolItem {
        x: 10
        anchors.verticalCenter: parent.verticalCenter
        name: row.section.symbol
        color: row.isSelected ? Theme.onAccent : Theme.accent
    }

    PlainLabel {
        id: label

        x: 35
        width: parent.width - 38
        anchors.verticalCenter: parent.verticalCenter
        text: row.section.title
        color: row.isSelected ? Theme.onAccent : Theme.primary
        Accessible.ignored: true
    }

    MouseArea {
        id: area

        anchors.fill: parent
        hoverEnabled: true
        onClicked: row.chosen()
        onContainsMouseChanged: containsMouse && label.truncated ? Hints.show(row, label.text) : Hints.hide(row)
    }

    FocusRing {
        visible: row.hasKeyboard
    }
}
