import QtQuick
import Swabby.Ui

// While the assistant is asked, and the way out.
Row {
    id: wait

    property string text

    signal cancelled

    spacing: 10

    Spinner {
        anchors.verticalCenter: parent.verticalCenter
    }

    PlainLabel {
        anchors.verticalCenter: parent.verticalCenter
        text: wait.text
        color: Theme.secondary
    }

    ActionButton {
        anchors.verticalCenter: parent.verticalCenter
        implicitHeight: 26
        text: "Cancel"
        onActivated: wait.cancelled()
    }
}
