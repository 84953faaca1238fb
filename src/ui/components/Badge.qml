import QtQuick
import Swabby.Ui

Rectangle {
    id: badge

    property string text
    property int tint: 0

    implicitWidth: label.implicitWidth + 14
    implicitHeight: 18
    radius: height / 2
    color: Theme.washes[tint]
    visible: text !== ""

    PlainLabel {
        id: label

        anchors.centerIn: parent
        text: badge.text
        font: Theme.smallHeadingFont
        color: Theme.inks[badge.tint]
    }
}
