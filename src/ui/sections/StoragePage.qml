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

    Paragraph {
        width: parent.width
        leftPadding: 16
        rightPadding: 16
        text: page.storage.queueNote
        font: Theme.smallFont
        color: Theme.secondary
        visible: text !== ""
    }

    ClutterCard {
        list: page.storage.quickClean
        symbol: "trash"
        title: "Quick Clean"
        subtitle: "Regenerates automatically"
        note: page.storage.sentNote
    }

    ClutterCard {
        list: page.storage.duplicates
        symbol: "doc.on.doc"
        title: "Duplicates"
        subtitle: "Finds exact duplicates in Downloads and Desktop."
    }

    ClutterCard {
        list: page.storage.forgottenFiles
        symbol: "clock"
        title: "Forgotten files"
        subtitle: "Finds large, unused files untouched for months."
    }

    ClutterCard {
        list: page.storage.applications
        symbol: "square.grid.2x2"
        title: "App Uninstaller"
        subtitle: "Remove an app along with the caches, preferences, and support files it leaves behind."
        actionLabel: "Remove"
        onActed: id => page.storage.uninstall(id)
    }
}
