import QtQuick
import Swabby.Ui

// The button that begins a search; while it runs, how far it is and the way out.
Row {
    id: controls

    required property scanText scan
    property string subject

    signal begun
    signal stopped

    spacing: 12

    Column {
        anchors.verticalCenter: parent.verticalCenter
        width: 170
        spacing: 4
        visible: controls.scan.isScanning

        Figure {
            width: parent.width
            text: controls.scan.progress
            font: Theme.smallFont
            color: Theme.secondary
            elide: Text.ElideMiddle
            horizontalAlignment: controls.scan.fraction > 0 ? Text.AlignLeft : Text.AlignRight
        }

        Bar {
            width: parent.width
            implicitHeight: 4
            fraction: controls.scan.fraction
            visible: controls.scan.fraction > 0
        }
    }

    Spinner {
        anchors.verticalCenter: parent.verticalCenter
        visible: controls.scan.isScanning && controls.scan.fraction <= 0
    }

    ActionButton {
        anchors.verticalCenter: parent.verticalCenter
        text: controls.scan.action
        name: controls.subject === "" ? text : text + ": " + controls.subject
        onActivated: controls.scan.isScanning ? controls.stopped() : controls.begun()
    }
}
