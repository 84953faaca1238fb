import QtQuick
import Swabby.Ui

// What launches when a person logs in, and how to stop it.
ScrollPage {
    id: page

    required property MainWindowView view

    StartupCard {
        width: parent.width
        view: page.view
        heading: "Worth a second look"
        rows: page.view.state.startupToReview
    }

    StartupCard {
        width: parent.width
        view: page.view
        heading: "Everything else"
        rows: page.view.state.startupRest
    }

    StartupCard {
        width: parent.width
        view: page.view
        heading: "Turned off here"
        rows: page.view.startup.disabled
        isOff: true
    }

    Card {
        width: parent.width
        visible: page.view.state.startupToReview.count + page.view.state.startupRest.count === 0

        CenteredLabel {
            text: "Nothing starts by itself when you log in."
        }
    }

    PermissionRow {
        width: parent.width
        request: page.view.state.missingItems
        onWanted: what => page.view.coordinator.openPermissionSettings(what)
    }

    Item {
        width: parent.width
        height: Math.max(32, words.height)

        Note {
            id: words

            anchors.left: parent.left
            anchors.right: settings.left
            anchors.rightMargin: 12
            anchors.verticalCenter: parent.verticalCenter
            text: page.view.startup.systemWideItems
        }

        ActionButton {
            id: settings

            anchors.right: parent.right
            anchors.verticalCenter: parent.verticalCenter
            text: Words.loginItemSettings
            onActivated: page.view.startup.openSettings()
        }
    }

    Component.onCompleted: page.view.startup.look()
}
