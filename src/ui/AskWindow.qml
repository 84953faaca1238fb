pragma ComponentBehavior: Bound
import QtQuick
import Swabby.Ui

// As large as what it holds; larger while a question is asked back.
Window {
    id: window

    required property AskView view
    readonly property real contentHeight: card.implicitHeight + 40

    readonly property real wantedHeight: sheets.isOpen ? Math.max(contentHeight, 400) : contentHeight

    // A window manager keeps a window to the bounds it was told last: the one in the way goes first.
    function fit(): void {
        if (wantedHeight > maximumHeight)
            maximumHeight = wantedHeight;
        else
            minimumHeight = wantedHeight;
        height = wantedHeight;
        minimumHeight = wantedHeight;
        maximumHeight = wantedHeight;
    }

    width: 480
    minimumWidth: width
    maximumWidth: width
    onWantedHeightChanged: fit()
    Component.onCompleted: fit()
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
