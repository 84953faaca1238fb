pragma ComponentBehavior: Bound
import QtQuick
import Swabby.Ui

// The sheet over the window, one at a time. Escape closes it, Return presses its prominent button, and
// the keyboard comes back to where it was.
FocusScope {
    id: layer

    required property MainWindowView view
    readonly property ConfirmationView confirmation: view.coordinator.confirmation
    readonly property ExplainView explanation: view.coordinator.explanation
    readonly property string wanted: {
        if (view.showLastWindowNotice)
            return "LastWindowSheet.qml";
        if (confirmation.isOpen)
            return "ConfirmSheet.qml";
        if (explanation.isOpen)
            return "ExplainSheet.qml";
        if (view.showHealthDetail)
            return "HealthDetailSheet.qml";
        return view.showWelcome ? "WelcomeSheet.qml" : "";
    }
    readonly property bool isOpen: wanted !== ""
    property Item returnTo: null

    function close(): void {
        if (view.showLastWindowNotice)
            view.showLastWindowNotice = false;
        else if (confirmation.isOpen)
            confirmation.cancel();
        else if (explanation.isOpen)
            explanation.close();
        else if (view.showHealthDetail)
            view.showHealthDetail = false;
        else
            view.finishWelcome();
    }

    visible: opacity > 0
    opacity: isOpen ? 1 : 0
    onWantedChanged: {
        if (wanted !== "") {
            if (returnTo === null)
                returnTo = Window.activeFocusItem;
            loader.setSource(wanted, {
                "view": view
            });
            forceActiveFocus();
        } else if (returnTo !== null) {
            returnTo.forceActiveFocus();
            returnTo = null;
        }
    }
    onVisibleChanged: if (!visible)
        loader.source = ""

    Keys.onEscapePressed: close()
    Keys.onReturnPressed: (loader.item as Sheet)?.confirmed()
    Keys.onEnterPressed: (loader.item as Sheet)?.confirmed()

    Behavior on opacity {
        NumberAnimation {
            duration: Theme.sheetDuration
            easing.type: Easing.InOutQuad
        }
    }

    Rectangle {
        anchors.fill: parent
        color: Theme.scrim

        MouseArea {
            anchors.fill: parent
            hoverEnabled: true
            onWheel: wheel => wheel.accepted = true
        }
    }

    Loader {
        id: loader

        anchors.centerIn: parent
        focus: true

        Connections {
            function onDismissed(): void {
                layer.close();
            }

            target: loader.item
        }
    }
}
