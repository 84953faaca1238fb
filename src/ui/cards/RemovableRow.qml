pragma ComponentBehavior: Bound
import QtQuick
import Swabby.Ui

// Something that can be removed: a box or a button of its own, and what is behind it on request.
Item {
    id: row

    required property removableRowText entry
    property string actionLabel
    property bool hasBox: actionLabel === ""
    property bool isExpanded: false
    property bool isLeaving: false
    readonly property string subtitle: isLeaving ? Words.noLongerListed : entry.subtitle
    property bool isFolding: false
    property string shownId

    signal folded
    signal toggled
    signal acted
    signal quitted
    signal shown(string path)

    width: parent === null ? 0 : parent.width
    implicitHeight: head.height + (isExpanded ? details.height : 0)
    clip: heightMotion.running
    Accessible.role: Accessible.ListItem
    Accessible.name: entry.title + (subtitle === "" ? "" : ", " + subtitle) + ", " + entry.size
    opacity: isLeaving ? 0.45 : 1

    // Another thing's row has its height at once.
    onEntryChanged: if (entry.id !== shownId) {
        heightMotion.complete();
        isFolding = false;
        shownId = entry.id;
    }

    Behavior on implicitHeight {
        enabled: row.isFolding

        NumberAnimation {
            id: heightMotion

            duration: Theme.foldDuration
            easing.type: Easing.InOutQuad
        }
    }

    Hairline {
    }

    Item {
        id: head

        width: parent.width
        height: 52

        MouseArea {
            anchors.fill: parent
            enabled: row.hasBox
            onClicked: row.toggled()
            onDoubleClicked: mouse => mouse.accepted = true
        }

        CheckBox {
            anchors.left: parent.left
            anchors.leftMargin: -4
            anchors.verticalCenter: parent.verticalCenter
            name: row.entry.title
            isChecked: row.entry.isSelected
            visible: row.hasBox
            onActivated: row.toggled()
        }

        AppIcon {
            anchors.verticalCenter: parent.verticalCenter
            tile: row.entry.tile
            visible: row.entry.tile.letter !== ""
        }

        Column {
            anchors.left: parent.left
            anchors.leftMargin: row.hasBox ? 28 : row.entry.tile.letter !== "" ? 34 : 0
            anchors.right: figures.left
            anchors.rightMargin: 12
            anchors.verticalCenter: parent.verticalCenter
            spacing: 1

            Row {
                width: parent.width
                spacing: 6

                NameLabel {
                    width: Math.min(implicitWidth, parent.width - (badge.visible ? badge.width + 6 : 0))
                    text: row.entry.title
                    elide: Text.ElideMiddle
                }

                SymbolItem {
                    id: badge

                    anchors.verticalCenter: parent.verticalCenter
                    width: 14
                    height: 14
                    name: row.entry.badgeSymbol
                    color: row.entry.badgeWarns ? Theme.marks[Tints.orange] : Theme.secondary
                    visible: row.entry.badgeSymbol !== ""
                    Accessible.role: Accessible.Graphic
                    Accessible.name: row.entry.badgeHint

                    MouseArea {
                        anchors.fill: parent
                        hoverEnabled: true
                        onClicked: row.toggled()
                        onContainsMouseChanged: containsMouse ? Hints.show(badge, row.entry.badgeHint) : Hints.hide(badge)
                    }
                }
            }

            Remark {
                width: parent.width
                text: row.subtitle
                visible: text !== ""
            }
        }

        Row {
            id: figures

            anchors.right: parent.right
            anchors.verticalCenter: parent.verticalCenter
            spacing: 8

            PlainLabel {
                anchors.verticalCenter: parent.verticalCenter
                text: row.entry.size
                color: Theme.secondary
            }

            RowButton {
                id: quit

                anchors.verticalCenter: parent.verticalCenter
                text: "Quit"
                subject: row.entry.title
                visible: row.entry.isRunning
                onActivated: row.quitted()
            }

            // An application that has ended has its size where it was.
            Item {
                width: quit.width
                height: 1
                visible: row.entry.tile.letter !== "" && !row.entry.isRunning
            }

            RowButton {
                anchors.verticalCenter: parent.verticalCenter
                text: row.actionLabel
                subject: row.entry.title
                isBusy: row.entry.isBusy
                isAvailable: !row.entry.isRunning
                visible: row.actionLabel !== ""
                onActivated: row.acted()
            }

            SymbolButton {
                anchors.verticalCenter: parent.verticalCenter
                width: 24
                height: 24
                symbolSize: 12
                symbol: row.isExpanded ? "chevron.up" : "chevron.down"
                tip: row.isExpanded ? "Hide what is behind it" : "Show what is behind it"
                name: tip + ": " + row.entry.title
                visible: row.entry.hasDetails
                onActivated: {
                    row.isFolding = true;
                    row.folded();
                }
            }

            // So that the sizes of all rows stand under each other.
            Item {
                width: 24
                height: 1
                visible: row.hasBox && !row.entry.hasDetails
            }
        }
    }

    Column {
        id: details

        x: row.hasBox ? 28 : 12
        y: head.height
        width: row.width - x

        Repeater {
            model: row.isExpanded ? row.entry.details() : []

            RemovalDetailRow {
                required property removalDetail modelData

                width: details.width
                entry: modelData
                onShown: row.shown(modelData.path)
            }
        }
    }
}
