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
        onAllToggled: isSelected => page.storage.setAllSelected(list, isSelected)
        onShown: path => page.view.coordinator.confirmation.showInFolder(path)
        onPermissionWanted: what => page.view.coordinator.openPermissionSettings(what)
    }

    remedy: quickClean
    footer: DecisionBar {
        parent: page
        y: page.viewHeight
        width: page.width
        text: page.storage.queueText
        note: Words.untilConfirmed
        action: "Review and clean up"
        canAct: page.storage.canCleanUp
        onActed: page.storage.cleanUp()
    }
    Component.onCompleted: storage.enter()

    StorageHeader {
        width: parent.width
        storage: page.storage
    }

    ClutterCard {
        id: quickClean

        list: page.storage.quickClean
        note: page.storage.sentNote
        trouble: page.storage.trouble
        missing: page.view.state.closedTrash
        onSettingsWanted: page.storage.openAssistantSettings()
    }

    Card {
        width: parent.width
        spacing: 6
        visible: page.storage.unfamiliar.rows.count > 0

        CleanupHeader {
            symbol: "questionmark.circle"
            title: "Unfamiliar folders"
            subtitle: "Looked over one at a time, not counted above"
        }

        RemovableRows {
            width: parent.width
            list: page.storage.unfamiliar
            actionLabel: "Remove…"
            onActed: id => page.storage.removeAlone(id)
            onShown: path => page.view.coordinator.confirmation.showInFolder(path)
        }
    }

    ClutterCard {
        list: page.storage.duplicates
    }

    ClutterCard {
        list: page.storage.forgottenFiles
    }

    ClutterCard {
        list: page.storage.applications
        missing: page.view.state.refusedRemoval
        actionLabel: "Remove"
        note: page.storage.packagedPrograms
        noteAction: page.storage.softwareManager
        onNoteFollowed: page.storage.openSoftwareManager()
        onActed: id => page.storage.uninstall(id)
        onQuitted: id => page.storage.quitApplication(id)
    }
}
