import QtQuick
import Swabby.Ui

// The page's title and the controls that are there on every page.
Item {
    id: toolbar

    required property MainWindowView view

    readonly property bool isTight: width < 640

    implicitHeight: 52

    PlainLabel {
        anchors.left: parent.left
        anchors.leftMargin: 20
        anchors.right: controls.left
        anchors.rightMargin: 12
        anchors.verticalCenter: parent.verticalCenter
        text: toolbar.view.selected.title
        font: Theme.titleFont
        Accessible.role: Accessible.Heading
    }

    Row {
        id: controls

        anchors.right: parent.right
        anchors.rightMargin: 16
        anchors.verticalCenter: parent.verticalCenter
        spacing: 12

        HealthPill {
            anchors.verticalCenter: parent.verticalCenter
            word: toolbar.view.state.healthWord
            tint: toolbar.view.state.healthTint
            visible: toolbar.view.state.isKnown
            onActivated: toolbar.view.showHealthDetail = true
        }

        ToolbarButton {
            anchors.verticalCenter: parent.verticalCenter
            symbol: "sparkles"
            text: Words.ask
            tip: Words.askHint
            isTight: toolbar.isTight
            onActivated: toolbar.view.openAskWindow()
        }

        ToolbarButton {
            anchors.verticalCenter: parent.verticalCenter
            symbol: "checkmark.seal"
            text: Words.check
            tip: Words.checkHint
            isTight: toolbar.isTight
            onActivated: toolbar.view.openCheck()
        }

        SymbolButton {
            symbol: "arrow.clockwise"
            tip: "Refresh"
            isBusy: toolbar.view.isRefreshing || toolbar.view.isScanning
            onActivated: toolbar.view.refresh()
        }

        SymbolButton {
            symbol: "gearshape"
            tip: "Settings"
            onActivated: toolbar.view.openSettingsWindow()
        }
    }

    Hairline {
        anchors.bottom: parent.bottom
    }
}
