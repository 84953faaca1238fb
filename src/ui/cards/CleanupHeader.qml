import QtQuick
import Swabby.Ui

// What a card of clutter is about, with its controls at the end.
Item {
    id: header

    property string symbol
    property string title
    property string subtitle
    default property alias trailing: end.data

    width: parent === null ? 0 : parent.width
    implicitHeight: Math.max(38, words.height)

    SymbolPlate {
        id: plate

        anchors.verticalCenter: parent.verticalCenter
        symbol: header.symbol
    }

    Column {
        id: words

        anchors.left: plate.right
        anchors.leftMargin: 12
        anchors.right: end.left
        anchors.rightMargin: 12
        anchors.verticalCenter: parent.verticalCenter
        spacing: 1

        PlainLabel {
            width: parent.width
            text: header.title
            font: Theme.headingFont
            Accessible.role: Accessible.Heading
        }

        Note {
            width: parent.width
            text: header.subtitle
        }
    }

    Row {
        id: end

        anchors.right: parent.right
        anchors.verticalCenter: parent.verticalCenter
        spacing: 12
    }
}
