pragma ComponentBehavior: Bound
import QtQuick
import Swabby.Ui

// Programs as rows divided by hairlines; a friendly line when there are none.
Column {
    id: list

    required property MainWindowView view
    required property RowModel rows
    property string emptyText
    property bool hasBars: false

    spacing: 0

    Repeater {
        model: list.rows

        Item {
            id: place

            required property processRowText entry
            required property bool isLeaving
            required property int index

            width: list.width
            height: row.implicitHeight + 2 * row.y
            Accessible.role: Accessible.ListItem
            Accessible.name: row.spoken
            opacity: isLeaving ? 0.45 : 1

            Hairline {
                visible: place.index > 0
            }

            ProcessRowView {
                id: row

                y: isCompact ? 4 : 8
                width: parent.width - actions.width - 12
                entry: place.entry
                isLeaving: place.isLeaving
                isCompact: list.view.state.isCompact
                hasBar: list.hasBars
            }

            ProcessActions {
                id: actions

                anchors.right: parent.right
                anchors.verticalCenter: parent.verticalCenter
                view: list.view
                entry: place.entry
                hasPin: true
            }
        }
    }

    CenteredLabel {
        topPadding: 12
        bottomPadding: 12
        text: list.emptyText
        visible: list.rows.count === 0
    }
}
