import QtQuick
import Swabby.Ui

// A box to tick. What it stands for is its owner's: it only asks to be toggled.
Pressable {
    id: box

    property bool isChecked: false

    implicitWidth: 24
    implicitHeight: 24
    innerRadius: 5
    Accessible.role: Accessible.CheckBox
    Accessible.checkable: true
    Accessible.checked: isChecked
    Accessible.onToggleAction: trigger()

    Rectangle {
        anchors.centerIn: parent
        width: 16
        height: 16
        radius: 4
        color: box.isChecked ? Theme.accentFill : box.isHovered ? Theme.quietFill : "transparent"
        border.width: box.isChecked ? 0 : 1.5
        border.color: Theme.secondary

        SymbolItem {
            anchors.centerIn: parent
            width: 12
            height: 12
            name: "checkmark"
            color: Theme.onAccent
            visible: box.isChecked
        }
    }
}
