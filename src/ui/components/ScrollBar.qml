import QtQuick
import Swabby.Ui

// How far a page is scrolled, at its right edge. It is dragged; a press beside the thumb takes it there.
MouseArea {
    id: bar

    required property Flickable page
    readonly property real hidden: page.contentHeight - page.height
    property real grip: 0

    signal wanted(y: real)

    function seek(y: real): void {
        wanted((y - grip) / (height - thumb.height) * hidden);
    }

    anchors.right: parent.right
    width: 14
    visible: hidden > 1
    hoverEnabled: true
    preventStealing: true
    onPressed: mouse => {
        const isOnThumb = mouse.y >= thumb.y && mouse.y < thumb.y + thumb.height;
        grip = isOnThumb ? mouse.y - thumb.y : thumb.height / 2;
        seek(mouse.y);
    }
    onPositionChanged: mouse => {
        if (pressed)
            seek(mouse.y);
    }

    Rectangle {
        id: thumb

        readonly property bool isWide: bar.containsMouse || bar.pressed

        anchors.right: parent.right
        anchors.rightMargin: isWide ? 2 : 3
        y: bar.hidden > 0 ? bar.page.contentY / bar.hidden * (bar.height - height) : 0
        width: isWide ? 8 : 6
        height: Math.max(32, Math.round(bar.height * bar.height / (bar.height + Math.max(0, bar.hidden))))
        radius: width / 2
        color: Theme.secondary
        opacity: bar.pressed ? 0.9 : isWide ? 0.65 : 0.35
    }
}
