import QtQuick
import Swabby.Ui

// The first run's introduction.
Sheet {
    id: sheet

    name: "Welcome to Swabby"
    onConfirmed: dismissed()

    header: PlainLabel {
        anchors.fill: parent
        verticalAlignment: Text.AlignVCenter
        text: "Welcome to Swabby"
        font: Theme.titleFont
    }

    footer: ActionButton {
        anchors.right: parent.right
        text: "Get started"
        isProminent: true
        onActivated: sheet.dismissed()
    }
}
