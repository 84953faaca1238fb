import QtQuick
import Swabby.Ui

// A program or what starts it: its icon, its name over a line about it, and what can be done at the end.
Item {
    id: row

    property programTile tile
    property string name
    property string detail
    property string badge
    property int badgeTint: 0
    property real gap: 11
    property bool hasLine: false
    property bool isLeaving: false
    property int nameElide: Text.ElideRight
    default property alias buttons: end.data

    opacity: isLeaving ? 0.45 : 1

    Hairline {
        visible: row.hasLine
    }

    AppIcon {
        id: icon

        anchors.verticalCenter: parent.verticalCenter
        tile: row.tile
    }

    Column {
        anchors.left: icon.right
        anchors.leftMargin: row.gap
        anchors.right: end.left
        anchors.rightMargin: 12
        anchors.verticalCenter: parent.verticalCenter
        spacing: 1

        Row {
            width: parent.width
            spacing: 8

            NameLabel {
                width: Math.min(implicitWidth, parent.width - (mark.visible ? mark.width + 8 : 0))
                anchors.verticalCenter: parent.verticalCenter
                text: row.name
                elide: row.nameElide
            }

            Badge {
                id: mark

                anchors.verticalCenter: parent.verticalCenter
                text: row.badge
                tint: row.badgeTint
            }
        }

        Remark {
            width: parent.width
            text: row.isLeaving ? Words.noLongerListed : row.detail
        }
    }

    Row {
        id: end

        anchors.right: parent.right
        anchors.verticalCenter: parent.verticalCenter
        spacing: 8
    }
}
