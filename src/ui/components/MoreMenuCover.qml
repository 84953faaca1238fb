import QtQuick
import Swabby.Ui

// The unfolded actions over the window, which folds them when it is pressed anywhere else.
Item {
    id: cover

    required property MoreMenu button

    function leave(): void {
        button.isOpen = false;
        button.forceActiveFocus();
    }

    Component.onCompleted: menu.open()

    MouseArea {
        anchors.fill: parent
        onPressed: cover.button.isOpen = false
        onWheel: cover.button.isOpen = false
    }

    MenuLines {
        id: menu

        function open(): void {
            const corner = cover.button.mapToItem(cover, cover.button.width, cover.button.height + 4);
            x = Math.max(8, corner.x - width);
            y = corner.y + height <= cover.button.Window.height - 8 ? corner.y : corner.y - height - cover.button.height - 8;
            forceActiveFocus();
        }

        entries: cover.button.entries
        name: cover.button.name
        // A window that closes by Escape folds its menu first.
        Keys.onShortcutOverride: event => event.accepted = event.key === Qt.Key_Escape
        Keys.onEscapePressed: cover.leave()
        Keys.onTabPressed: cover.leave()
        onChosen: index => cover.button.choose(index)

        FloatingShadow {
            z: -1
            innerRadius: 9
        }

        Rectangle {
            z: -1
            anchors.fill: parent
            anchors.margins: -1
            radius: 9
            color: Theme.card
            border.width: 1
            border.color: Theme.hairline
        }
    }
}
