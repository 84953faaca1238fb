pragma ComponentBehavior: Bound
import QtQuick
import Swabby.Ui

// Larger while a question is asked back.
FixedWindow {
    id: window

    required property AskView view
    readonly property real contentHeight: card.implicitHeight + 40

    wantedHeight: sheets.isOpen ? Math.max(contentHeight, 400) : contentHeight
    width: 480
    title: "Ask Swabby"
    color: Theme.window

    AskCard {
        id: card

        x: 20
        y: 20
        width: parent.width - 40
        height: parent.height - 40
        enabled: !sheets.isOpen
        view: window.view
    }

    SheetHost {
        id: sheets

        anchors.fill: parent
        given: ({
                "confirmation": window.view.confirmation
            })
        wanted: window.view.confirmation.isOpen ? "ConfirmSheet.qml" : ""
        onDismissed: window.view.confirmation.cancel()
    }

    HintBubble {
    }

    Shortcut {
        sequences: ["Escape", "Ctrl+W"]
        enabled: !sheets.isOpen
        onActivated: window.close()
    }
}
