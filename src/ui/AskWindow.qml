pragma ComponentBehavior: Bound
import QtQuick
import Swabby.Ui

// As large as what it holds; larger while a question is asked back.
Window {
    id: window

    required property AskView view
    readonly property real contentHeight: card.implicitHeight + 40

    width: 480
    height: sheets.isOpen ? Math.max(contentHeight, 400) : contentHeight
    minimumWidth: width
    maximumWidth: width
    minimumHeight: height
    maximumHeight: height
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
