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
    readonly property bool isHeld: (loader.item as ScrollPage)?.isHeld ?? false
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

    Connections {
        function onRemedyWanted(): void {
            (loader.item as ScrollPage)?.showRemedy();
        }

        target: frame.view
    }

    onPageChanged: showPage()
    Component.onCompleted: showPage()

    NewsStrip {
        id: news

        anchors.horizontalCenter: parent.horizontalCenter
        z: 1
        width: Math.min(parent.width - 40, Theme.columnWidth)
        view: frame.view
    }

    Loader {
        id: loader

        anchors.top: news.bottom
        anchors.bottom: parent.bottom
        width: parent.width
        visible: frame.isReady
    }

    // What slides beneath the heading ends at an edge.
    Hairline {
        anchors.top: loader.top
        visible: frame.isReady && ((loader.item as ScrollPage)?.contentY ?? 0) > 0
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
