pragma ComponentBehavior: Bound
import QtQuick
import Swabby.Ui

// The unfolded actions over the window, which folds them when it is pressed anywhere else.
Item {
    id: cover

    required property MoreMenu button

    Component.onCompleted: menu.open()

    MouseArea {
        anchors.fill: parent
        onPressed: cover.button.isOpen = false
        onWheel: cover.button.isOpen = false
    }

    FocusScope {
        id: menu

        property int current: 0

        function open(): void {
            const corner = cover.button.mapToItem(cover, cover.button.width, cover.button.height + 4);
            x = Math.max(8, corner.x - width);
            y = corner.y + height <= cover.button.Window.height - 8 ? corner.y : corner.y - height - cover.button.height - 8;
            current = 0;
            forceActiveFocus();
        }

        width: Math.max(150, column.implicitWidth + 12)
        height: column.height + 12
        Accessible.role: Accessible.PopupMenu
        Accessible.name: cover.button.name
        Keys.onUpPressed: current = Math.max(0, current - 1)
        Keys.onDownPressed: current = Math.min(cover.button.entries.length - 1, current + 1)
        Keys.onReturnPressed: cover.button.choose(current)
        Keys.onEnterPressed: cover.button.choose(current)
        Keys.onSpacePressed: cover.button.choose(current)
        Keys.onEscapePressed: {
            cover.button.isOpen = false;
            cover.button.forceActiveFocus();
        }
        Keys.onTabPressed: {
            cover.button.isOpen = false;
            cover.button.forceActiveFocus();
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
                model: cover.button.entries

                Item {
                    id: choice

                    required property menuEntry modelData
                    required property int index

                    implicitWidth: label.implicitWidth + 24
                    width: column.width
                    height: 28
                    Accessible.role: Accessible.MenuItem
                    Accessible.name: modelData.label
                    Accessible.description: modelData.hint
                    Accessible.onPressAction: cover.button.choose(choice.index)

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
                        text: choice.modelData.label
                        Accessible.ignored: true
                    }

                    MouseArea {
                        anchors.fill: parent
                        hoverEnabled: true
                        onContainsMouseChanged: {
                            if (containsMouse)
                                menu.current = choice.index;
                            containsMouse ? Hints.show(choice, choice.modelData.hint) : Hints.hide(choice);
                        }
                        onClicked: cover.button.choose(choice.index)
                    }
                }
            }
        }
    }
}
