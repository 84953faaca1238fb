import QtQuick
import Swabby.Ui

// One kind of clutter: the search for it, and what it found.
Card {
    id: card

    required property RemovableList list
    property string symbol
    property string title
    property string subtitle
    property string actionLabel
    property string note

    signal begun
    signal stopped
    signal toggled(string id, bool isSelected)
    signal acted(string id)
    signal shown(string path)

    spacing: 6

    CleanupHeader {
        symbol: card.symbol
        title: card.title
        subtitle: card.subtitle

        ScanControls {
            scan: card.list.text
            subject: card.title
            onBegun: card.begun()
            onStopped: card.stopped()
        }
    }

    RemovableRows {
        width: parent.width
        list: card.list
        actionLabel: card.actionLabel
        visible: card.list.rows.count > 0
        onToggled: (id, isSelected) => card.toggled(id, isSelected)
        onActed: id => card.acted(id)
        onShown: path => card.shown(path)
    }

    PlainLabel {
        width: parent.width
        topPadding: 8
        bottomPadding: 4
        horizontalAlignment: Text.AlignHCenter
        text: card.list.text.empty
        color: Theme.secondary
        visible: text !== ""
    }

    Paragraph {
        width: parent.width
        text: card.note
        font: Theme.axisFont
        color: Theme.secondary
        visible: text !== ""
    }
}
