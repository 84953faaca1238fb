pragma ComponentBehavior: Bound
import QtQuick
import Swabby.Ui

Window {
    id: window

    required property MainWindowView view

    // What had the keyboard may go with its page; the sidebar stays.
    function keepKeyboard(): void {
        if (!sheets.isOpen && (activeFocusItem === contentItem || section.isBare(activeFocusItem)))
            sidebar.forceActiveFocus();
    }

    width: 940
    height: 660
    minimumWidth: 820
    minimumHeight: 560
    title: view.selected.title
    color: Theme.window
    onActiveFocusItemChanged: keepKeyboard()
    onClosing: close => close.accepted = window.view.mayClose()

    Item {
        id: content

        anchors.fill: parent
        enabled: !sheets.isOpen
        Keys.onPressed: event => event.accepted = section.scrollWith(event.key)

        Sidebar {
            id: sidebar

            width: Math.round(Math.max(203, Math.min(210, 203 + (window.width - 820) / 16)))
            height: parent.height
            focus: true
            isPointed: true
            view: window.view
        }

        Toolbar {
            id: toolbar

            x: sidebar.width
            width: parent.width - x
            view: window.view
        }

        SectionPage {
            id: section

            x: sidebar.width
            y: toolbar.height
            width: parent.width - x
            height: parent.height - y
            view: window.view
        }
    }

    SheetLayer {
        id: sheets

        anchors.fill: parent
        view: window.view
        onIsOpenChanged: settled.restart()
    }

    // What stands beneath a sheet waits for what is decided there.
    Binding {
        target: window.view
        property: "isHeld"
        value: section.isHeld || sheets.visible
    }

    // A sheet gives the keyboard back where it was, if that is still there.
    Timer {
        id: settled

        interval: 0
        onTriggered: window.keepKeyboard()
    }

    HintBubble {
    }

    Shortcut {
        sequences: ["Ctrl+R", "F5"]
        enabled: !sheets.isOpen
        onActivated: window.view.refresh()
    }

    Shortcut {
        sequence: "Ctrl+W"
        onActivated: window.close()
    }

    Instantiator {
        model: window.view.sections

        Shortcut {
            id: shortcut

            required property sectionRow modelData
            required property int index

            sequence: shortcut.modelData.shortcut
            autoRepeat: false
            enabled: !sheets.isOpen
            onActivated: window.view.followShortcut(shortcut.index)
        }
    }
}
