import QtQuick
import Swabby.Ui

// Said before the only way to Swabby closes.
Sheet {
    id: sheet

    required property MainWindowView view

    name: "Quit Swabby?"
    onConfirmed: dismissed()

    header: PlainLabel {
        anchors.fill: parent
        verticalAlignment: Text.AlignVCenter
        text: "Quit Swabby?"
        font: Theme.titleFont
    }

    Paragraph {
        width: parent.width
        text: "Closing this window also ends Swabby — there is no menu bar here to keep it in."
        color: Theme.secondary
    }

    footer: Row {
        anchors.right: parent.right
        spacing: 8

        ActionButton {
            text: "Quit Swabby"
            onActivated: sheet.view.quit()
        }

        ActionButton {
            text: "Keep Open"
            isProminent: true
            onActivated: sheet.dismissed()
        }
    }
}
