pragma ComponentBehavior: Bound
import QtQuick
import Swabby.Ui

// The sheet over a window, one at a time. Escape closes it, Return presses its prominent button, and the
// keyboard comes back to where it was.
FocusScope {
    id: host

    /// The sheet's file; empty for none.
    property string wanted
    /// What the sheet is given when it is made.
    property var given
    readonly property bool isOpen: wanted !== ""
    property Item returnTo: null

    signal dismissed

    visible: opacity > 0
    opacity: isOpen ? 1 : 0
    onWantedChanged: {
        if (wanted !== "") {
            if (returnTo === null)
                returnTo = Window.activeFocusItem;
            loader.setSource(wanted, given);
            forceActiveFocus();
        } else if (returnTo !== null) {
            returnTo.forceActiveFocus();
            returnTo = null;
        } else {
            // What had the keyboard before is gone meanwhile; nothing that is hidden may keep it.
            focus = false;
        }
    }
    onVisibleChanged: if (!visible)
        loader.source = ""

    Keys.onEscapePressed: dismissed()
    // A key that was held down when the sheet came means what was there before.
    Keys.onReturnPressed: event => event.isAutoRepeat || (loader.item as Sheet)?.confirmed()
    Keys.onEnterPressed: event => event.isAutoRepeat || (loader.item as Sheet)?.confirmed()

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

        readonly property bool keepsTop: (item as Sheet)?.keepsTop ?? false
        readonly property real middle: Math.round((parent.height - height) / 2)
        property real lastY: 0

        anchors.horizontalCenter: parent.horizontalCenter
        y: keepsTop ? lastY : middle
        focus: true
        onYChanged: lastY = y

        Connections {
            function onDismissed(): void {
                host.dismissed();
            }

            target: loader.item
        }
    }
}
