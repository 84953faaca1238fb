pragma ComponentBehavior: Bound
import QtQuick
import Swabby.Ui

// One of a few figures. It only asks for another one; whoever owns the figure sets it.
Item {
    id: slider

    property list<real> stops: [0, 100]
    property real figure: 0
    property string name
    property string valueText
    property color fillColor: Theme.accent
    // What screen readers look for; they may write a value, which asks for it like every other way.
    property real value: figure
    readonly property real minimumValue: stops[0]
    readonly property real maximumValue: stops[stops.length - 1]
    readonly property real stepSize: stops[1] - stops[0]

    signal moved(real wanted)

    /// The stops stand at the same distance from each other, whatever lies between their figures.
    function fractionOf(figure: real): real {
        const above = Array.from(stops).findIndex(stop => stop >= figure);
        if (above <= 0)
            return above < 0 ? 1 : 0;
        const between = (figure - stops[above - 1]) / (stops[above] - stops[above - 1]);
        return (above - 1 + between) / (stops.length - 1);
    }

    function stopBeside(direction: int): real {
        const beyond = Array.from(stops).filter(stop => direction > 0 ? stop > figure : stop < figure);
        return beyond.length === 0 ? figure : direction > 0 ? beyond[0] : beyond[beyond.length - 1];
    }

    function move(direction: int): void {
        slider.moved(stopBeside(direction));
    }

    onValueChanged: {
        if (value === figure)
            return;
        // However small a step is asked for, it leads to another stop.
        if (enabled)
            moved(value > figure ? Math.max(value, stopBeside(1)) : Math.min(value, stopBeside(-1)));
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
            slider.moved(slider.minimumValue);
        else if (event.key === Qt.Key_End)
            slider.moved(slider.maximumValue);
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

    Repeater {
        model: slider.stops.length

        Rectangle {
            required property int index

            x: knob.width / 2 - 1 + index / (slider.stops.length - 1) * (slider.width - knob.width)
            y: slider.height - 3
            width: 2
            height: 2
            radius: 1
            color: Theme.tertiary
        }
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

        x: slider.fractionOf(slider.figure) * (slider.width - width)
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
            slider.moved(slider.stops[Math.round(share * (slider.stops.length - 1))]);
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
