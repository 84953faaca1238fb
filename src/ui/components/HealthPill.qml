import QtQuick
import Swabby.Ui

// The verdict in a word; pressing it explains it.
Pressable {
    id: pill

    property string word
    property int tint: 0

    name: word
    tip: Words.healthHint
    innerRadius: height / 2
    implicitWidth: Math.ceil(label.implicitWidth) + 38
    implicitHeight: 26
    opacity: isPressed ? 0.75 : 1

    Rectangle {
        anchors.fill: parent
        radius: height / 2
        color: Theme.washes[pill.tint]
        border.width: pill.isHovered ? 1 : 0
        border.color: Theme.inks[pill.tint]
    }

    PlainLabel {
        id: label

        x: 11
        anchors.verticalCenter: parent.verticalCenter
        text: pill.word
        font: Theme.buttonFont
        color: Theme.inks[pill.tint]
        Accessible.ignored: true
    }

    SymbolItem {
        anchors.right: parent.right
        anchors.rightMargin: 9
        anchors.verticalCenter: parent.verticalCenter
        width: 14
        height: 14
        name: "info.circle"
        color: Theme.inks[pill.tint]
    }
}
