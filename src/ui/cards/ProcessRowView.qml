import QtQuick
import Swabby.Ui

// One program: who it is, how much it takes, how safe it is to leave alone.
Item {
    id: row

    required property processRowText entry
    property bool isCompact: false
    property bool hasBar: false
    /// What a screen reader says of the row, which its buttons belong to as well.
    readonly property string spoken: entry.name + ", " + entry.value + ", " + entry.detail

    implicitHeight: isCompact ? 32 : 35

    AppIcon {
        id: tile

        anchors.verticalCenter: parent.verticalCenter
        width: row.isCompact ? 18 : 24
        height: width
        tile: row.entry.tile
    }

    Column {
        anchors.left: tile.right
        anchors.leftMargin: 11
        anchors.right: bar.visible ? bar.left : value.left
        anchors.rightMargin: 12
        anchors.verticalCenter: parent.verticalCenter

        Row {
            width: parent.width
            spacing: 6

            NameLabel {
                id: name

                width: Math.min(implicitWidth, parent.width - (row.entry.isPinned ? 18 : 0))
                text: row.entry.name
            }

            SymbolItem {
                anchors.verticalCenter: parent.verticalCenter
                width: 12
                height: 12
                name: "pin.fill"
                color: Theme.secondary
                visible: row.entry.isPinned
                Accessible.role: Accessible.Graphic
                Accessible.name: "Pinned"
            }
        }

        Remark {
            width: parent.width
            text: row.entry.detail
        }
    }

    Bar {
        id: bar

        anchors.right: value.left
        anchors.rightMargin: 12
        anchors.verticalCenter: parent.verticalCenter
        width: Math.min(120, Math.round((row.width - 185) * 0.36))
        fraction: row.entry.fraction
        fillColor: Theme.marks[row.entry.tint]
        visible: row.hasBar && row.width > 360
    }

    Figure {
        id: value

        anchors.right: trust.left
        anchors.rightMargin: 12
        anchors.verticalCenter: parent.verticalCenter
        width: row.hasBar ? 80 : 64
        horizontalAlignment: Text.AlignRight
        text: row.entry.value
        font: Theme.headingFont
        color: row.entry.isEmphasized ? Theme.inks[Tints.red] : Theme.primary
    }

    TrustStar {
        id: trust

        anchors.right: parent.right
        anchors.verticalCenter: parent.verticalCenter
        symbol: row.entry.trustSymbol
        score: row.entry.trust
    }
}
