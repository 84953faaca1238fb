pragma ComponentBehavior: Bound
import QtQuick
import Swabby.Ui

// The menu of the item in the menu bar, where the panel shows none itself. Arrows move in it, Return chooses,
// Escape closes it.
FixedWindow {
    id: window

    required property PopoverView view
    property int current: -1

    function choose(line: int): void {
        if (line < 0)
            return;
        window.close();
        view.follow(view.menu[line].command);
    }

    width: 168
    wantedHeight: column.height + 12
    title: "Swabby's menu"
    flags: Qt.Tool | Qt.FramelessWindowHint | Qt.WindowStaysOnTopHint | Qt.NoDropShadowWindowHint
    color: "transparent"
    onVisibleChanged: current = -1

    Shortcut {
        sequence: "Escape"
        onActivated: window.close()
    }

    Rectangle {
        anchors.fill: parent
        radius: 9
        color: Theme.card
        border.width: 1
        border.color: Theme.cardEdge
    }

    FocusScope {
        anchors.fill: parent
        focus: true
        Accessible.role: Accessible.PopupMenu
        Accessible.name: window.title
        Keys.onUpPressed: window.current = Math.max(0, window.current - 1)
        Keys.onDownPressed: window.current = Math.min(lines.count - 1, window.current + 1)
        Keys.onReturnPressed: window.choose(window.current)
        Keys.onEnterPressed: window.choose(window.current)
        Keys.onSpacePressed: window.choose(window.current)

        Column {
            id: column

            x: 6
            y: 6
            width: parent.width - 12

            Repeater {
                id: lines

                model: window.view.menu

                Item {
                    id: line

                    required property menuEntry modelData
                    required property int index

                    width: column.width
                    height: modelData.isParted ? 37 : 28
                    Accessible.role: Accessible.MenuItem
                    Accessible.name: modelData.label
                    Accessible.onPressAction: window.choose(index)

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
                        color: window.current === line.index ? Theme.quietFill : "transparent"

                        PlainLabel {
                            x: 12
                            anchors.verticalCenter: parent.verticalCenter
                            text: line.modelData.label
                            Accessible.ignored: true
                        }

                        MouseArea {
                            anchors.fill: parent
                            hoverEnabled: true
                            onContainsMouseChanged: window.current = containsMouse ? line.index : -1
                            onClicked: window.choose(line.index)
                        }
                    }
                }
            }
        }
    }
}
