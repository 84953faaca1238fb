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
        // Whole pixels, or the edge is a blur.
        border.width: box.isChecked ? 0 : Math.max(1, Math.floor(1.5 * Screen.devicePixelRatio)) / Math.max(1, Screen.devicePixelRatio)
        border.color: Theme.secondary

        SymbolItem {
            anchors.centerIn: parent
            width: 12
            height: 12
            name: "checkmark"
            weight: 3.4
            color: Theme.onAccent
            visible: box.isChecked
        }
    }
}
