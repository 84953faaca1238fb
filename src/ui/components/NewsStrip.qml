pragma ComponentBehavior: Bound
import QtQuick
import Swabby.Ui

// What a section is about; while there is news that takes its place, so that the page stays where it is. A long
// piece of news reaches over the page.
Item {
    id: strip

    required property MainWindowView view
    readonly property bool hasBanner: banner.removal.text !== ""
    readonly property bool hasNotice: notice.text !== ""
    readonly property bool isTaken: hasBanner || hasNotice && !isBelow
    // Both are said at once: what a removal left is part of what it did. The notice keeps that place then.
    property bool isBelow: false

    implicitHeight: Math.max(48, subtitle.height + 30)
    onHasBannerChanged: isBelow = hasBanner || isBelow && hasNotice
    onHasNoticeChanged: isBelow = hasBanner

    Paragraph {
        id: subtitle

        y: 16
        width: parent.width
        text: strip.view.selected.subtitle
        font: Theme.subtitleFont
        color: Theme.secondary
        opacity: strip.isTaken || standing.visible || putBack.visible ? 0 : 1
    }

    NoticeBar {
        id: notice

        y: strip.isBelow ? 48 : 6
        width: parent.width
        text: strip.view.coordinator.notice
        tint: strip.view.coordinator.noticeTint
        lingers: true
        visible: strip.hasNotice
        onDismissed: strip.view.coordinator.dismissNotice()
    }

    RemovalBanner {
        id: banner

        y: 6
        width: parent.width
        removal: strip.view.removal
    }

    NoticeBar {
        id: standing

        y: 6
        width: parent.width
        text: strip.view.standing
        offer: strip.view.canStartAnew ? "Start anew" : ""
        canBeDismissed: false
        visible: text !== "" && !strip.isTaken && !strip.hasNotice && !putBack.visible
        onAccepted: strip.view.startAnew()
    }

    PutBackRow {
        id: putBack

        y: 12
        width: parent.width
        removal: strip.view.removal
        isWanted: strip.view.canRemoveHere && !strip.isTaken
    }
}
