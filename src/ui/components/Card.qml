pragma ComponentBehavior: Bound
import QtQuick
import Swabby.Ui

// A sheet of paper on the page; what it holds stands in a column.
Item {
    id: card

    default property alias content: column.data
    property alias spacing: column.spacing
    property color fill: Theme.card
    property bool isPaper: true
    property color edge: "transparent"
    property real verticalPadding: 14
    property real sidePadding: 16

    implicitHeight: column.implicitHeight + 2 * verticalPadding

    Repeater {
        model: Theme.isDark || !card.isPaper ? 0 : 3

        Rectangle {
            required property int index

            anchors.fill: parent
            anchors.margins: -1 - 2 * index
            anchors.topMargin: -index
            anchors.bottomMargin: -2 - 3 * index
            radius: 13 + 2 * index
            color: Theme.shadow
        }
    }

    Rectangle {
        width: 30
        height: parent.height
        radius: 12
        color: card.edge
        visible: card.edge.a > 0
    }

    Rectangle {
        anchors.fill: parent
        anchors.leftMargin: card.edge.a > 0 ? 3 : 0
        radius: 12
        color: card.fill
        border.width: 1
        border.color: card.isPaper ? Theme.cardEdge : Theme.hairline
    }

    Column {
        id: column

        x: card.sidePadding
        y: card.verticalPadding
        width: card.width - 2 * card.sidePadding
    }
}
