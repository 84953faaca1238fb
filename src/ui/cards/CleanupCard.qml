import QtQuick
import Swabby.Ui

// One kind of clutter: the search for it, and what it found.
Card {
    id: card

    required property RemovableList list
    property string actionLabel
    property string note
    property string noteAction
    property assistantTrouble trouble
    property permissionRequest missing

    signal settingsWanted
    signal permissionWanted(what: int)
    signal noteFollowed
    signal begun
    signal stopped
    signal toggled(string id, bool isSelected)
    signal allToggled(bool isSelected)
    signal acted(string id)
    signal quitted(string id)
    signal shown(string path)

    spacing: 6

    CleanupHeader {
        symbol: card.list.text.symbol
        title: card.list.text.title
        subtitle: card.list.text.subtitle

        SelectAll {
            anchors.verticalCenter: parent.verticalCenter
            list: card.list
            subject: card.list.text.title
            visible: card.actionLabel === "" && card.list.rows.count > 0
            onWanted: isSelected => card.allToggled(isSelected)
        }

        ScanControls {
            scan: card.list.text
            subject: card.list.text.title
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
        onQuitted: id => card.quitted(id)
        onShown: path => card.shown(path)
    }

    CenteredLabel {
        topPadding: 8
        bottomPadding: 4
        text: card.list.text.empty
        wrapMode: Text.Wrap
        visible: text !== ""
    }

    PermissionRow {
        width: parent.width
        request: card.missing
        onWanted: what => card.permissionWanted(what)
    }

    AssistantTroubleNote {
        width: parent.width
        topPadding: 6
        trouble: card.trouble
        visible: trouble.reason !== "" && !card.list.text.isScanning
        onRetried: card.begun()
        onSettingsWanted: card.settingsWanted()
    }

    Paragraph {
        width: parent.width
        text: card.note
        font: Theme.axisFont
        color: Theme.secondary
        visible: text !== ""
    }

    ActionButton {
        text: card.noteAction
        visible: text !== ""
        onActivated: card.noteFollowed()
    }
}
