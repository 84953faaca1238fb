pragma ComponentBehavior: Bound
import QtQuick
import Swabby.Ui

// The lines of a menu, as wide as their words. Arrows move in it and Return chooses.
FocusScope {
    id: menu

    property var entries: []
    property int current: entries.findIndex(entry => entry.isAvailable)
    property string name
    readonly property real lineWidth: Math.min(400, Math.max(138, ...Array.from(column.children, line => line.implicitWidth)))

    signal chosen(index: int)

    function choose(): void {
        if (current >= 0)
            chosen(current);
    }

    // Past what cannot be chosen.
    function step(by: int): void {
        let next = current + by;
        while (next >= 0 && next < entries.length && !entries[next].isAvailable)
            next += by;
        if (next >= 0 && next < entries.length)
            current = next;
    }

    implicitWidth: lineWidth + 12
    implicitHeight: column.height + 12
    Accessible.role: Accessible.PopupMenu
    Accessible.name: name
    Keys.onUpPressed: step(-1)
    Keys.onDownPressed: step(1)
    Keys.onReturnPressed: choose()
    Keys.onEnterPressed: choose()
    Keys.onSpacePressed: choose()

    Column {
        id: column

        x: 6
        y: 6

        Repeater {
            model: menu.entries

            Item {
                id: line

                required property menuEntry modelData
                required property int index

                implicitWidth: Math.ceil(label.implicitWidth) + 24
                width: menu.lineWidth
                height: modelData.isParted ? 37 : 28
                Accessible.role: Accessible.MenuItem
                Accessible.name: modelData.label
                Accessible.description: modelData.hint
                Accessible.onPressAction: menu.chosen(index)

                Hairline {
                    x: 6
                    y: 4
                    width: parent.width - 12
                    visible: line.modelData.isParted
                }

                Rectangle {
                    anchors.bottom: parent.bottom
                    width: parent.width
                    height: 28
                    radius: 6
                    color: menu.current === line.index && line.modelData.isAvailable ? Theme.quietFill : "transparent"

                    PlainLabel {
                        id: label

                        x: 12
                        width: parent.width - 24
                        anchors.verticalCenter: parent.verticalCenter
                        text: line.modelData.label
                        color: line.modelData.isAvailable ? Theme.primary : Theme.tertiary
                        Accessible.ignored: true
                    }

                    MouseArea {
                        anchors.fill: parent
                        hoverEnabled: true
                        onContainsMouseChanged: {
                            menu.current = containsMouse ? line.index : -1;
                            containsMouse ? Hints.show(line, line.modelData.hint) : Hints.hide(line);
                        }
                        onClicked: menu.chosen(line.index)
                    }
                }
            }
        }
    }
}
