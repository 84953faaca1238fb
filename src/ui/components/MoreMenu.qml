pragma ComponentBehavior: Bound
import QtQuick
import Swabby.Ui

// An ellipsis that unfolds a few further actions. Arrows move in it, Return chooses, Escape folds it.
SymbolButton {
    id: button

    property var labels: []
    property string subject
    property string hint
    property bool isOpen: false

    signal chosen(index: int)

    function choose(index: int): void {
        isOpen = false;
        forceActiveFocus();
        chosen(index);
    }

    width: 28
    height: 24
    symbol: "ellipsis"
    tip: "More"
    name: "More: " + subject
    Accessible.role: Accessible.ButtonMenu
    onActivated: {
        isOpen = !isOpen;
        if (isOpen)
            menu.open();
    }

    Item {
        id: cover

        parent: button.Window.contentItem
        anchors.fill: parent
        z: 90
        visible: button.isOpen

        MouseArea {
            anchors.fill: parent
            onPressed: button.isOpen = false
            onWheel: button.isOpen = false
        }

        FocusScope {
            id: menu

            property int current: 0

            function open(): void {
                const corner = button.mapToItem(cover, button.width, button.height + 4);
                x = Math.max(8, corner.x - width);
                y = corner.y + height <= cover.height - 8 ? corner.y : corner.y - height - button.height - 8;
                current = 0;
                forceActiveFocus();
            }

            width: Math.max(150, column.implicitWidth + 12)
            height: column.height + 12
            Accessible.role: Accessible.PopupMenu
            Accessible.name: button.name
            Keys.onUpPressed: current = Math.max(0, current - 1)
            Keys.onDownPressed: current = Math.min(button.labels.length - 1, current + 1)
            Keys.onReturnPressed: button.choose(current)
            Keys.onEnterPressed: button.choose(current)
            Keys.onSpacePressed: button.choose(current)
            Keys.onEscapePressed: {
                button.isOpen = false;
                button.forceActiveFocus();
            }
            Keys.onTabPressed: {
                button.isOpen = false;
                button.forceActiveFocus();
            }

            FloatingShadow {
                innerRadius: 9
            }

            Rectangle {
                anchors.fill: parent
                anchors.margins: -1
                radius: 9
                color: Theme.card
                border.width: 1
                border.color: Theme.hairline
            }

            Column {
                id: column

                x: 6
                y: 6
                width: menu.width - 12

                Repeater {
                    model: button.labels

                    Item {
                        id: choice

                        required property string modelData
                        required property int index

                        implicitWidth: label.implicitWidth + 24
                        width: column.width
                        height: 28
                        Accessible.role: Accessible.MenuItem
                        Accessible.name: modelData
                        Accessible.description: button.hint
                        Accessible.onPressAction: button.choose(choice.index)

                        Rectangle {
                            anchors.fill: parent
                            radius: 6
                            color: menu.current === choice.index ? Theme.quietFill : "transparent"
                        }

                        PlainLabel {
                            id: label

                            x: 12
                            width: parent.width - 24
                            anchors.verticalCenter: parent.verticalCenter
                            text: choice.modelData
                            Accessible.ignored: true
                        }

                        MouseArea {
                            anchors.fill: parent
                            hoverEnabled: true
                            onContainsMouseChanged: {
                                if (containsMouse)
                                    menu.current = choice.index;
                                containsMouse ? Hints.show(choice, button.hint) : Hints.hide(choice);
                            }
                            onClicked: button.choose(choice.index)
                        }
                    }
                }
            }
        }
    }
}
