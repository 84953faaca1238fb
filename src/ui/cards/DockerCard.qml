pragma ComponentBehavior: Bound
import QtQuick
import Swabby.Ui

// What the container engine can do without, kind by kind.
Card {
    id: card

    required property DeveloperView developer
    required property removableRowText entry
    required property bool isLeaving

    opacity: isLeaving ? 0.45 : 1
    spacing: 8

    CleanupHeader {
        symbol: "internaldrive"
        title: "Docker Reclaimable"
        subtitle: card.isLeaving ? Words.noLongerListed : Words.dockerClutter

        PlainLabel {
            anchors.verticalCenter: parent.verticalCenter
            text: card.entry.size
            font: Theme.titleFont
        }

        ActionButton {
            anchors.verticalCenter: parent.verticalCenter
            text: "Remove Docker Clutter"
            onActivated: card.developer.remove(card.entry.id)
        }
    }

    Repeater {
        model: card.developer.dockerRows

        Item {
            id: row

            required property dockerRowText modelData

            width: parent.width
            height: 20
            Accessible.role: Accessible.ListItem
            Accessible.name: modelData.kind + ", " + modelData.size

            PlainLabel {
                width: 110
                anchors.verticalCenter: parent.verticalCenter
                text: row.modelData.kind
                color: Theme.secondary
                Accessible.ignored: true
            }

            Bar {
                anchors.left: parent.left
                anchors.leftMargin: 122
                anchors.right: parent.right
                anchors.rightMargin: 82
                anchors.verticalCenter: parent.verticalCenter
                fraction: row.modelData.fraction
            }

            PlainLabel {
                anchors.right: parent.right
                anchors.verticalCenter: parent.verticalCenter
                text: row.modelData.size
                Accessible.ignored: true
            }
        }
    }

    Note {
        width: parent.width
        text: card.developer.dockerNote
        visible: text !== ""
    }
}
