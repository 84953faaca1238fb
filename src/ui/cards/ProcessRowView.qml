import QtQuick
import Swabby.Ui

// One program: who it is, how much it takes, how safe it is to leave alone. A compact row is a single line.
Item {
    id: row

    required property processRowText entry
    property bool isCompact: false
    property bool hasBar: false
    property bool isLeaving: false
    readonly property string detail: isLeaving ? Words.noLongerListed : entry.detail
    /// What a screen reader says of the row, which its buttons belong to as well.
    readonly property string spoken: entry.name + ", " + entry.value + ", " + detail

    implicitHeight: isCompact ? 24 : 35

    AppIcon {
        id: tile

        anchors.verticalCenter: parent.verticalCenter
        width: row.isCompact ? 18 : 24
        height: width
        tile: row.entry.tile
    }

    Item {
        id: words

        readonly property real pinWidth: pin.visible ? 18 : 0

        anchors.left: tile.right
        anchors.leftMargin: 11
        anchors.right: bar.visible ? bar.left : value.left
        anchors.rightMargin: 12
        anchors.verticalCenter: parent.verticalCenter
        height: name.height + (row.isCompact ? 0 : detail.height)

        NameLabel {
            id: name

            width: Math.min(implicitWidth, parent.width - words.pinWidth - (row.isCompact ? Math.min(detail.implicitWidth + 10, parent.width * 0.4) : 0))
            text: row.entry.name
        }

        SymbolItem {
            id: pin

            anchors.left: name.right
            anchors.leftMargin: 6
            anchors.verticalCenter: name.verticalCenter
            width: 12
            height: 12
            name: "pin.fill"
            color: Theme.secondary
            visible: row.entry.isPinned
            Accessible.role: Accessible.Graphic
            Accessible.name: "Pinned"
        }

        Remark {
            id: detail

            x: row.isCompact ? name.width + words.pinWidth + 10 : 0
            y: row.isCompact ? name.baselineOffset - baselineOffset : name.height
            width: parent.width - x
            text: row.detail
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
