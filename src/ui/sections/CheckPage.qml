pragma ComponentBehavior: Bound
import QtQuick
import Swabby.Ui

// The one-tap full check: its steps while it looks, then what it found.
ScrollPage {
    id: page

    required property MainWindowView view
    readonly property CheckView check: view.check
    property int visit: 0

    // Another check's findings take the place of these.
    mayHold: !check.isScanning
    footer: DecisionBar {
        parent: page
        y: page.viewHeight
        width: page.width
        text: page.check.chosenText
        note: Words.untilConfirmed
        action: page.check.removeLabel
        canAct: page.check.canRemove
        visible: !page.check.isScanning && page.check.candidates.rows.count > 0
        onActed: page.check.remove()
    }
    Component.onCompleted: visit = check.enter()
    Component.onDestruction: check.leave(visit)

    CheckProgress {
        anchors.horizontalCenter: parent.horizontalCenter
        width: Math.min(parent.width, 520)
        check: page.check
        visible: page.check.isScanning
    }

    Card {
        width: parent.width
        spacing: 12
        visible: page.check.noResult !== "" && !page.check.isScanning

        CenteredLabel {
            text: page.check.noResult
            wrapMode: Text.Wrap
        }
    }

    CheckSummary {
        width: parent.width
        check: page.check
        visible: !page.check.isScanning && page.check.noResult === ""
    }

    PermissionRow {
        width: parent.width
        request: page.view.state.closedTrash
        visible: text !== "" && !page.check.isScanning
        onWanted: what => page.view.coordinator.openPermissionSettings(what)
    }

    Card {
        width: parent.width
        visible: !page.check.isScanning && page.check.candidates.rows.count > 0

        CardHeading {
            text: "Reclaimable storage"

            SelectAll {
                list: page.check.candidates
                subject: "Reclaimable storage"
                onWanted: isSelected => page.check.setAllSelected(isSelected)
            }
        }

        Remark {
            width: parent.width
            bottomPadding: 6
            text: page.check.clearable
        }

        RemovableRows {
            width: parent.width
            list: page.check.candidates
            onToggled: (id, isSelected) => page.check.setSelected(id, isSelected)
            onShown: path => page.view.coordinator.confirmation.showInFolder(path)
        }
    }

    CheckStartupCard {
        width: parent.width
        check: page.check
        visible: !page.check.isScanning && page.check.startupItems.count > 0
    }

    Repeater {
        model: page.check.watched

        CheckPowerCard {
            width: parent.width
            check: page.check
            visible: !page.check.isScanning
        }
    }

    ActionButton {
        anchors.horizontalCenter: parent.horizontalCenter
        text: "Scan Again"
        visible: !page.check.isScanning
        onActivated: page.check.run()
    }
}
