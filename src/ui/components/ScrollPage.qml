import QtQuick
import Swabby.Ui

// A column that scrolls inside the page; what the keyboard reaches is brought into view.
Flickable {
    id: page

    default property alias content: column.data
    property alias spacing: column.spacing
    property real padding: 20
    readonly property Item focusItem: Window.activeFocusItem

    function reveal(item: Item): void {
        let ancestor = item;
        while (ancestor !== null && ancestor !== column)
            ancestor = ancestor.parent;
        if (ancestor === null)
            return;
        const top = item.mapToItem(column, 0, 0).y + column.y - 8;
        const bottom = top + item.height + 16;
        if (top < contentY)
            contentY = Math.max(0, top);
        else if (bottom > contentY + height)
            contentY = Math.min(contentHeight - height, bottom - height);
    }

    function scrollBy(distance: real): void {
        contentY = Math.max(0, Math.min(Math.max(0, contentHeight - height), contentY + distance));
    }

    function distanceOf(key: int): real {
        switch (key) {
        case Qt.Key_Down:
            return 48;
        case Qt.Key_Up:
            return -48;
        case Qt.Key_PageDown:
            return height - 48;
        case Qt.Key_PageUp:
            return 48 - height;
        case Qt.Key_Home:
            return -contentHeight;
        case Qt.Key_End:
            return contentHeight;
        }
        return 0;
    }

    Keys.onPressed: event => {
        const distance = distanceOf(event.key);
        event.accepted = distance !== 0;
        page.scrollBy(distance);
    }

    clip: true
    contentWidth: width
    contentHeight: column.height + column.y + padding
    boundsBehavior: Flickable.StopAtBounds
    flickableDirection: Flickable.VerticalFlick
    onFocusItemChanged: if (focusItem !== null)
        reveal(focusItem)

    Column {
        id: column

        x: page.padding
        width: page.width - 2 * page.padding
        spacing: 12
    }

    Rectangle {
        parent: page
        x: page.width - width - 3
        y: page.visibleArea.yPosition * page.height + 2
        width: 6
        height: Math.max(24, page.visibleArea.heightRatio * page.height - 4)
        radius: 3
        color: Theme.hoverFill
        visible: page.contentHeight > page.height + 1
    }
}
