import QtQuick
import Swabby.Ui

// Why the assistant did not answer, and what to do about it.
Column {
    id: note

    required property assistantTrouble trouble

    signal retried
    signal settingsWanted

    spacing: 8
    visible: trouble.reason !== ""

    Row {
        width: parent.width
        spacing: 8

        SymbolItem {
            y: 1
            width: 14
            height: 14
            name: "exclamationmark.triangle.fill"
            color: Theme.marks[Tints.orange]
        }

        Note {
            width: parent.width - 22
            text: note.trouble.reason
        }
    }

    Row {
        spacing: 8

        ActionButton {
            implicitHeight: 26
            text: "Try again"
            onActivated: note.retried()
        }

        ActionButton {
            implicitHeight: 26
            text: "Open AI settings"
            visible: note.trouble.isMendedInSettings
            onActivated: note.settingsWanted()
        }
    }
}
