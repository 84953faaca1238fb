pragma ComponentBehavior: Bound
import QtQuick
import Swabby.Ui

Window {
    id: window

    required property SettingsView view
    readonly property list<string> pages: ["GeneralTab.qml", "NotificationsTab.qml", "ThresholdsTab.qml", "AssistantTab.qml"]

    function showTab(): void {
        page.setSource("settings/" + pages[view.tab], {
            "view": window.view
        });
    }

    width: 540
    height: 520
    minimumWidth: 520
    minimumHeight: 420
    title: "Settings"
    color: Theme.window
    onActiveChanged: if (active)
        view.reload()
    Component.onCompleted: showTab()

    Connections {
        function onTabChanged(): void {
            window.showTab();
        }

        target: window.view
    }

    TabStrip {
        id: tabs

        y: 12
        enabled: !sheets.isOpen
        width: parent.width
        name: "Settings"
        labels: ["General", "Notifications", "Thresholds", "AI"]
        symbols: ["gearshape", "bell", "slider.horizontal.3", "sparkles"]
        current: window.view.tab
        onChosen: index => window.view.tab = index
    }

    Hairline {
        id: line

        x: 20
        y: 72
        width: parent.width - 40
    }

    Loader {
        id: page

        anchors.top: line.bottom
        anchors.topMargin: 16
        anchors.bottom: notice.top
        width: parent.width
        enabled: !sheets.isOpen
    }

    // What is not kept any more leaves when nobody points at it.
    Binding {
        target: window.view.neverRemove
        property: "isHeld"
        value: (page.item as ScrollPage)?.isHeld ?? false
    }

    Item {
        id: notice

        x: 20
        width: parent.width - 40
        height: window.view.notice === "" ? 0 : words.implicitHeight + 22
        anchors.bottom: parent.bottom
        visible: height > 0

        Hairline {
        }

        Paragraph {
            id: words

            y: 10
            width: parent.width
            horizontalAlignment: Text.AlignHCenter
            text: window.view.notice
            font: Theme.smallFont
            color: window.view.noticeIsTrouble ? Theme.inks[Tints.orange] : Theme.secondary
        }

        Timer {
            readonly property string text: words.text

            interval: 6000 + 60 * text.length
            onTextChanged: if (running)
                restart()
            running: window.active && window.view.noticeEnds
            onTriggered: window.view.dismissNotice()
        }
    }

    SheetHost {
        id: sheets

        anchors.fill: parent
        wanted: window.view.folder.isOpen ? "FolderSheet.qml" : ""
        given: ({
                "view": window.view
            })
        onDismissed: window.view.folder.close()
    }

    HintBubble {
    }

    Shortcut {
        sequence: "Escape"
        enabled: !sheets.isOpen
        onActivated: window.close()
    }

    Shortcut {
        sequence: "Ctrl+W"
        onActivated: window.close()
    }
}
