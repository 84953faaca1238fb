pragma ComponentBehavior: Bound
import QtQuick
import Swabby.Ui

// One choice out of a few, side by side.
FocusScope {
    id: segments

    property var choices: []
    property int current: 0
    property string name

    function choose(index: int): void {
        current = Math.max(0, Math.min(choices.length - 1, index));
    }

    implicitWidth: 120 * choices.length
    implicitHeight: 28
    activeFocusOnTab: true
    Accessible.role: Accessible.PageTabList
    Accessible.name: name
    Keys.onLeftPressed: choose(current - 1)
    Keys.onRightPressed: choose(current + 1)

    Rectangle {
        anchors.fill: parent
        radius: 7
        color: Theme.quietFill
    }

    Rectangle {
        x: 2 + segments.current * (segments.width - 4) / segments.choices.length
        y: 2
        width: (segments.width - 4) / segments.choices.length
        height: segments.height - 4
        radius: 6
        color: Theme.isDark ? "#55555a" : Theme.card
        border.width: 1
        border.color: Theme.hairline

        Behavior on x {
            NumberAnimation {
                duration: Theme.foldDuration
                easing.type: Easing.InOutQuad
            }
        }
    }

    Row {
        anchors.fill: parent
        anchors.margins: 2

        Repeater {
            model: segments.choices

            Item {
                id: choice

                required property string modelData
                required property int index

                width: (segments.width - 4) / segments.choices.length
                height: parent.height
                Accessible.role: Accessible.PageTab
                Accessible.name: modelData
                Accessible.selected: segments.current === index
                Accessible.onPressAction: if (choice.enabled)
                    segments.choose(index)

                Rectangle {
                    anchors.fill: parent
                    radius: 6
                    color: Theme.quietFill
                    visible: area.containsMouse && segments.current !== choice.index
                }

                PlainLabel {
                    anchors.centerIn: parent
                    text: choice.modelData
                    font: Theme.buttonFont
                    Accessible.ignored: true
                }

                MouseArea {
                    id: area

                    anchors.fill: parent
                    hoverEnabled: true
                    onClicked: segments.choose(choice.index)
                }
            }
        }
    }

    FocusRing {
    }
}
