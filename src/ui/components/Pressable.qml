import QtQuick
import Swabby.Ui

// What every button has in common: pointer, keyboard, tooltip and the words for screen readers.
Item {
    id: pressable

    property string name
    property string tip
    property bool isBusy: false
    // A sheet over the window takes the keyboard and the pointer from what is beneath, but not its looks.
    property bool isAvailable: true
    property real innerRadius: 7
    property double actedAt: 0
    readonly property bool isHovered: area.containsMouse
    readonly property bool isPressed: area.pressed

    signal activated

    function trigger(): void {
        Hints.hide(pressable);
        if (!pressable.enabled || !pressable.visible || pressable.isBusy)
            return;
        actedAt = Date.now();
        pressable.activated();
    }

    enabled: isAvailable
    activeFocusOnTab: true
    Accessible.role: Accessible.Button
    Accessible.name: name
    // The toolkit does not tell screen readers what cannot be pressed.
    Accessible.description: !enabled ? "Not available now" : tip === name ? "" : tip
    Accessible.focusable: true
    Accessible.focused: activeFocus
    Accessible.onPressAction: trigger()
    Keys.onSpacePressed: trigger()
    Keys.onReturnPressed: trigger()
    Keys.onEnterPressed: trigger()
    onActiveFocusChanged: activeFocus ? Hints.show(pressable, tip) : Hints.hide(pressable)

    MouseArea {
        id: area

        anchors.fill: parent
        hoverEnabled: true
        // What has acted rests for as long as a double click takes. Its second press is not meant for what the
        // first one brought under the pointer either.
        onClicked: if (Math.abs(Date.now() - pressable.actedAt) >= Theme.doubleClickTime)
            pressable.trigger()
        onDoubleClicked: mouse => mouse.accepted = true
        onContainsMouseChanged: containsMouse ? Hints.show(pressable, pressable.tip) : Hints.hide(pressable)
    }

    FocusRing {
        innerRadius: pressable.innerRadius
    }
}
