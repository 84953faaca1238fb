import QtQuick
import Swabby.Ui

// The page's title and the controls that are there on every page.
Item {
    id: toolbar

    required property MainWindowView view

    // Words stand beside the symbols wherever there is room for them.
    readonly property real wholeWidth: 48 + title.implicitWidth + pill.width + ask.wholeWidth + check.wholeWidth + 56 + 4 * controls.spacing
    readonly property bool isTight: width < wholeWidth

    implicitHeight: 52

    PlainLabel {
        id: title

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
        spacing: toolbar.width < 700 ? 6 : 12

        HealthPill {
            id: pill

            anchors.verticalCenter: parent.verticalCenter
            word: toolbar.view.state.healthWord
            tint: toolbar.view.state.healthTint
            visible: toolbar.view.state.isKnown
            onActivated: toolbar.view.showHealthDetail = true
        }

        ToolbarButton {
            id: ask

            anchors.verticalCenter: parent.verticalCenter
            symbol: "sparkles"
            text: Words.ask
            tip: Words.askHint
            isTight: toolbar.isTight
            onActivated: toolbar.view.openAskWindow()
        }

        ToolbarButton {
            id: check

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
