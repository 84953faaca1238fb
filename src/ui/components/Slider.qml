import QtQuick
import Swabby.Ui

// A figure out of a range. It only asks for another value; whoever owns the figure sets it.
Item {
    id: slider

    property real from: 0
    property real to: 100
    property real step: 1
    property real figure: 0
    property string name
    property string valueText
    property color fillColor: Theme.accent
    readonly property real fraction: Math.max(0, Math.min(1, (figure - from) / (to - from)))
    // What screen readers look for; they may write a value, which asks for it like every other way.
    property real value: figure
    readonly property real minimumValue: from
    readonly property real maximumValue: to
    readonly property real stepSize: step

    signal moved(real wanted)

    function move(steps: real): void {
        slider.moved(slider.figure + steps * slider.step);
    }

    onValueChanged: {
        if (value === figure)
            return;
        if (enabled)
            moved(value);
        value = Qt.binding(() => slider.figure);
    }
    implicitWidth: 170
    implicitHeight: 24
    activeFocusOnTab: true
    Accessible.role: Accessible.Slider
    Accessible.name: name
    Accessible.description: valueText
    Accessible.focusable: true
    Accessible.focused: activeFocus
    Accessible.onIncreaseAction: if (enabled)
        move(1)
    Accessible.onDecreaseAction: if (enabled)
        move(-1)
    Keys.onPressed: event => {
        event.accepted = true;
        if (event.key === Qt.Key_Right || event.key === Qt.Key_Up)
            slider.move(1);
        else if (event.key === Qt.Key_Left || event.key === Qt.Key_Down)
            slider.move(-1);
        else if (event.key === Qt.Key_Home)
            slider.moved(slider.from);
        else if (event.key === Qt.Key_End)
            slider.moved(slider.to);
        else
            event.accepted = false;
    }

    Rectangle {
        anchors.verticalCenter: parent.verticalCenter
        width: parent.width
        height: 4
        radius: 2
        color: Theme.hoverFill
    }

    Rectangle {
        anchors.verticalCenter: parent.verticalCenter
        width: knob.x + knob.width / 2
        height: 4
        radius: 2
        color: slider.fillColor
    }

    Rectangle {
        x: knob.x - 1
        y: knob.y
        width: 20
        height: 20
        radius: 10
        color: Theme.quietFill
        visible: !Theme.isDark
    }

    Rectangle {
        id: knob

        x: slider.fraction * (slider.width - width)
        anchors.verticalCenter: parent.verticalCenter
        width: 18
        height: 18
        radius: 9
        color: "white"
        border.width: 1
        border.color: Theme.isDark ? "transparent" : "#d0d0d4"

        FocusRing {
            innerRadius: 9
            visible: slider.activeFocus
        }
    }

    MouseArea {
        function seek(x: real): void {
            const share = Math.max(0, Math.min(1, (x - knob.width / 2) / (width - knob.width)));
            slider.moved(slider.from + share * (slider.to - slider.from));
        }

        anchors.fill: parent
        preventStealing: true
        onPressed: mouse => {
            slider.forceActiveFocus();
            seek(mouse.x);
        }
        onPositionChanged: mouse => seek(mouse.x)
    }
}
