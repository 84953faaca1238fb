pragma ComponentBehavior: Bound
import QtQuick
import Swabby.Ui

// The frame of every section: its subtitle over its panel, or a sentence until there are figures.
Item {
    id: frame

    required property MainWindowView view
    readonly property bool isKnown: view.state.isKnown
    readonly property bool isReady: isKnown || !view.selected.waitsForFigures
    readonly property string page: isReady ? view.selected.page : ""

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

    NoticeBar {
        id: notice

        anchors.top: subtitle.bottom
        anchors.topMargin: 14
        x: 20
        width: parent.width - 40
        text: frame.view.coordinator.notice
        onDismissed: frame.view.coordinator.dismissNotice()
    }

    Loader {
        id: loader

        anchors.top: notice.bottom
        anchors.topMargin: notice.visible ? 12 : 0
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
            text: "Taking a first look at your Mac…"
            color: Theme.secondary
        }
    }
}
