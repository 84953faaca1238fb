pragma ComponentBehavior: Bound
import QtQuick
import Swabby.Ui

// The sections; arrows move through them while the sidebar has the keyboard.
FocusScope {
    id: sidebar

    required property MainWindowView view
    property bool isPointed: false

    activeFocusOnTab: true
    Accessible.role: Accessible.List
    Accessible.name: "Sections"
    onActiveFocusChanged: left.restart()
    Keys.onPressed: event => {
        const step = event.key === Qt.Key_Down ? 1 : event.key === Qt.Key_Up ? -1 : 0;
        const last = view.sections.length - 1;
        if (step !== 0)
            view.selectIndex(Math.max(0, Math.min(last, view.selectedIndex + step)));
        else if (event.key === Qt.Key_Home || event.key === Qt.Key_End)
            view.selectIndex(event.key === Qt.Key_Home ? 0 : last);
        else
            return;
        isPointed = false;
        event.accepted = true;
    }

    // A sheet and another window, which are known a moment later, give the keyboard back as they took it.
    Timer {
        id: left

        interval: 0
        onTriggered: if (!sidebar.activeFocus && sidebar.enabled && sidebar.Window.active)
            sidebar.isPointed = false
    }

    Rectangle {
        anchors.fill: parent
        color: Theme.sidebar
    }

    Rectangle {
        anchors.right: parent.right
        width: 1
        height: parent.height
        color: Theme.hairline
    }

    Column {
        x: 10
        y: 14
        width: parent.width - 20
        spacing: 2

        Repeater {
            model: sidebar.view.sections

            SidebarRow {
                id: row

                required property sectionRow modelData
                required property int index

                width: parent.width
                section: modelData
                isSelected: sidebar.view.selectedIndex === index
                hasKeyboard: isSelected && sidebar.activeFocus && !sidebar.isPointed
                onChosen: {
                    sidebar.isPointed = true;
                    sidebar.forceActiveFocus();
                    sidebar.view.selectIndex(row.index);
                }
            }
        }
    }
}
