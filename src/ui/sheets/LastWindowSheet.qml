import QtQuick
import Swabby.Ui

// Said before the only way to Swabby closes.
Sheet {
    id: sheet

    required property MainWindowView view

    name: Words.quit + "?"
    onConfirmed: dismissed()

    header: PlainLabel {
        anchors.fill: parent
        verticalAlignment: Text.AlignVCenter
        text: sheet.name
        font: Theme.titleFont
    }

    Paragraph {
        width: parent.width
        text: Words.lastWindow
        color: Theme.secondary
    }

    footer: Row {
        anchors.right: parent.right
        spacing: 8

        ActionButton {
            text: Words.quit
            onActivated: sheet.view.quit()
        }

        ActionButton {
            text: "Keep Open"
            isProminent: true
            onActivated: sheet.dismissed()
        }
    }
}
