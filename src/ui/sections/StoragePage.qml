pragma ComponentBehavior: Bound
import QtQuick
import Swabby.Ui

// Caches, duplicates, forgotten files and applications, and the queue of what is to go.
ScrollPage {
    id: page

    required property MainWindowView view
    readonly property StorageView storage: view.storage

    component ClutterCard: CleanupCard {
        width: parent === null ? 0 : parent.width
        onBegun: page.storage.scan(list)
        onStopped: page.storage.stop(list)
        onToggled: (id, isSelected) => page.storage.setSelected(id, isSelected)
        onShown: path => page.view.coordinator.confirmation.showInFolder(path)
    }

    Component.onCompleted: storage.enter()

    StorageHeader {
        width: parent.width
        storage: page.storage
    }

    Note {
        width: parent.width
        leftPadding: 16
        rightPadding: 16
        text: page.storage.queueNote
        visible: text !== ""
    }

    ClutterCard {
        list: page.storage.quickClean
        note: page.storage.sentNote
        trouble: page.storage.trouble
        onSettingsWanted: page.storage.openAssistantSettings()
    }

    ClutterCard {
        list: page.storage.duplicates
    }

    ClutterCard {
        list: page.storage.forgottenFiles
    }

    ClutterCard {
        list: page.storage.applications
        actionLabel: "Remove"
        onActed: id => page.storage.uninstall(id)
    }
}
