import QtQuick
import Swabby.Ui

// The menu of the item in the menu bar, where the panel shows none itself. Escape closes it.
FloatingPanel {
    id: window

    required property PopoverView view

    isBlended: view.isBlended
    panelWidth: menu.implicitWidth
    panelHeight: menu.implicitHeight
    panelRadius: 9
    fill: Theme.card
    title: "Swabby's menu"
    onVisibleChanged: menu.current = -1

    Shortcut {
        sequence: "Escape"
        onActivated: window.close()
    }

    MenuLines {
        id: menu

        anchors.fill: parent
        focus: true
        entries: window.view.menu
        name: window.title
        onChosen: index => {
            window.close();
            window.view.follow(entries[index].command);
        }
    }
}
