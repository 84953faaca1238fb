pragma ComponentBehavior: Bound
import QtQuick
import Swabby.Ui

// The frame of every section: its subtitle over its panel, or a sentence until there are figures. A page is
// made in small portions beside the one that is still shown, and then takes its place.
Item {
    id: frame

    required property MainWindowView view
    // On its own, so that a page which changes the state while it goes is not asked for again.
    readonly property bool isKnown: view.state.isKnown
    readonly property bool isReady: isKnown || !view.selected.waitsForFigures
    readonly property bool isHeld: shownPage?.isHeld ?? false
    readonly property string page: isReady ? view.selected.page : ""
    property PageLoader shown: null
    readonly property ScrollPage shownPage: shown?.item as ScrollPage

    component PageLoader: Loader {
        id: loader

        property string page // what it is wanted for
        property string made

        function make(wanted: string): void {
            page = wanted;
            made = wanted;
            source = "";
            setSource(Qt.resolvedUrl("../" + wanted), {
                "view": frame.view
            });
        }

        anchors.top: news.bottom
        anchors.bottom: parent.bottom
        width: parent.width
        // Not hidden, so that lists make their rows before they are seen.
        opacity: frame.shown === loader ? 1 : 0
        enabled: frame.shown === loader
        // An empty window has nothing to show meanwhile.
        asynchronous: frame.shown !== null && !Theme.isStill
        onLoaded: if (page !== "" && page === frame.page)
            frame.present(loader)
        else
            again.restart()
    }

    // Whether the key scrolled the page.
    function scrollWith(key: int): bool {
        return shownPage?.scrollWith(key) ?? false;
    }

    // Whether that is the page's place and nothing on the page: what had the keyboard is gone.
    function isBare(item: Item): bool {
        return item === one || item === other;
    }

    // What is half made is done before the place is taken by another page: the toolkit does not survive that
    // it is let go while things in it are made for a model that changes.
    function showPage(): void {
        const next = shown === one ? other : one;
        if (page === "" || page === shown?.page)
            present(page === "" ? null : shown);
        else if (next.status !== Loader.Loading)
            next.make(page);
        else if (next.made === page)
            next.page = page;
    }

    function present(next: PageLoader): void {
        for (const loader of [one, other])
            if (loader !== next)
                loader.page = "";
        shown = next;
        leaving.restart();
    }

    // Not while the page that came too late is being announced.
    Timer {
        id: again

        interval: 0
        onTriggered: frame.showPage()
    }

    // What is shown no more goes after the frame that shows the next page, which has enough to do.
    Timer {
        id: leaving

        interval: Theme.isStill ? 0 : 50
        onTriggered: {
            for (const loader of [one, other])
                if (loader.page === "" && loader.status !== Loader.Loading)
                    loader.source = "";
        }
    }

    Connections {
        function onRemedyWanted(): void {
            frame.shownPage?.showRemedy();
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

    PageLoader {
        id: one
    }

    PageLoader {
        id: other
    }

    // What slides beneath the heading ends at an edge.
    Hairline {
        anchors.top: one.top
        visible: (frame.shownPage?.contentY ?? 0) > 0
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
