import QtQuick
import Swabby.Ui

// A card's first line, with room for a remark or a control at its end.
Item {
    id: heading

    property alias text: label.text
    default property alias trailing: end.data

    width: parent.width
    implicitHeight: Math.max(20, end.implicitHeight)

    PlainLabel {
        id: label

        anchors.left: parent.left
        anchors.right: end.left
        anchors.rightMargin: 12
        anchors.verticalCenter: parent.verticalCenter
        font: Theme.headingFont
        Accessible.role: Accessible.Heading
    }

    Row {
        id: end

        anchors.right: parent.right
        anchors.verticalCenter: parent.verticalCenter
        spacing: 8
    }
}
