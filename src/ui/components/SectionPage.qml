pragma ComponentBehavior: Bound
import QtQuick
import Swabby.Ui

// The frame of every section: its subtitle over its panel, or a sentence until there are figures.
Item {
    id: frame

    required property MainWindowView view
    // On its own, so that a page which changes the state while it goes is not asked for again.
    readonly property bool isKnown: view.state.isKnown
    readonly property bool isReady: isKnown || !view.selected.waitsForFigures
    readonly property string page: isReady ? view.selected.page : ""

    // Whether the key scrolled the page.
    function scrollWith(key: int): bool {
        return (loader.item as ScrollPage)?.scrollWith(key) ?? false;
    }

    // Whether that is the page's place and nothing on the page: what had the keyboard is gone.
    function isBare(item: Item): bool {
        return item === loader;
    }

    function showPage(): void {
        if (page === "")
            loader.source = "";
        else
            loader.setSource(Qt.resolvedUrl("../" + page), {
                "view": view
            });
    }

    onPageChanged: showPage()
    Component.onCompleted: showPage()

    Paragraph {
        id: subtitle

        x: 20
        y: 16
        width: parent.width - 40
        text: frame.view.selected.subtitle
        font: Theme.subtitleFont
        color: Theme.secondary
    }

    // What a person has to see whatever the page is scrolled to.
    Column {
        id: news

        anchors.top: subtitle.bottom
        anchors.topMargin: 14
        x: 20
        width: parent.width - 40
        spacing: 10
        bottomPadding: notice.visible || banner.visible || putBack.visible ? 12 : 0

        NoticeBar {
            id: notice

            width: parent.width
            text: frame.view.coordinator.notice
            onDismissed: frame.view.coordinator.dismissNotice()
        }

        RemovalBanner {
            id: banner

            width: parent.width
            removal: frame.view.removal
        }

        PutBackRow {
            id: putBack

            width: parent.width
            removal: frame.view.removal
            isWanted: frame.view.canRemoveHere
        }
    }

    Loader {
        id: loader

        anchors.top: news.bottom
        anchors.bottom: parent.bottom
        width: parent.width
        visible: frame.isReady
    }

    Column {
        anchors.centerIn: parent
        spacing: 14
        visible: !frame.isReady

        Spinner {
            anchors.horizontalCenter: parent.horizontalCenter
            width: 24
            height: 24
        }

        PlainLabel {
            text: Words.firstLook
            color: Theme.secondary
        }
    }
}
