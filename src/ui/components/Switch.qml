import QtQuick
import Swabby.Ui

// On or off.
Pressable {
    id: toggle

    property bool isOn: false

    innerRadius: height / 2
    implicitWidth: 40
    implicitHeight: 24
    Accessible.role: Accessible.CheckBox
    Accessible.checkable: true
    Accessible.checked: isOn
    Accessible.onToggleAction: trigger()

    Rectangle {
        anchors.fill: parent
        radius: height / 2
        color: toggle.isOn ? Theme.accentFill : Theme.hoverFill

        Behavior on color {
            ColorAnimation {
                duration: Theme.foldDuration
            }
        }
    }

    Rectangle {
        x: toggle.isOn ? toggle.width - width - 2 : 2
        y: 2
        width: toggle.height - 4
        height: width
        radius: width / 2
        color: "white"
        border.width: 1
        border.color: Theme.hairline

        Behavior on x {
            NumberAnimation {
                duration: Theme.foldDuration
                easing.type: Easing.InOutQuad
            }
        }
    }
}
