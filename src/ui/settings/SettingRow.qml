import QtQuick
import Swabby.Ui

// What a setting is about, and its control at the end. All but the first have a line above.
Item {
    id: row

    property string label
    property string detail
    property bool isFirst: false
    default property alias control: slot.data

    implicitHeight: Math.max(words.implicitHeight, slot.height) + 22

    Hairline {
        visible: !row.isFirst
    }

    Column {
        id: words

        anchors.left: parent.left
        anchors.right: slot.left
        anchors.rightMargin: 16
        anchors.verticalCenter: parent.verticalCenter
        spacing: 1

        Paragraph {
            width: parent.width
            text: row.label
        }

        Note {
            width: parent.width
            text: row.detail
            visible: text !== ""
        }
    }

    Item {
        id: slot

        anchors.right: parent.right
        anchors.verticalCenter: parent.verticalCenter
        width: childrenRect.width
        height: childrenRect.height
    }
}
