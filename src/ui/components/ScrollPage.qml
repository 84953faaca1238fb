import QtQuick
import Swabby.Ui

// A column that scrolls inside the page; what the keyboard reaches is brought into view.
Flickable {
    id: page

    default property alias content: column.data
    property alias spacing: column.spacing
    property real padding: 20
    property real bottomPadding: padding
    // A child of the page that stands at viewHeight, whatever that is scrolled to.
    property Item footer: null
    readonly property real footerHeight: footer?.visible ? footer.height : 0
    readonly property real viewHeight: height - footerHeight
    // Where the page helps with what is wrong.
    property Item remedy: null
    readonly property Item focusItem: Window.activeFocusItem
    property bool mayHold: true
    // What the pointer is at, or else the keyboard: it keeps its place on the screen, whatever comes and goes
    // above it, and nothing in it moves.
    property Item held: null
    readonly property bool isHeld: held !== null

    function partWith(item: Item): Item {
        let part = item;
        while (part !== null && part.parent !== column)
            part = part.parent;
        return part;
    }

    function holds(item: Item): bool {
        return partWith(item) !== null;
    }

    function hold(): void {
        const at = pointer.point.position;
        const pointed = pointer.isUsed && pointer.hovered ? column.childAt(at.x - column.x, at.y - column.y) : null;
        const pressable = focusItem as Pressable;
        held = !mayHold ? null : pointed ?? (pressable === null ? null : partWith(pressable));
    }

    function isInFooter(item: Item): bool {
        let ancestor = item;
        while (ancestor !== null && ancestor !== footer)
            ancestor = ancestor.parent;
        return ancestor !== null;
    }

    function reveal(item: Item): void {
        if (!holds(item))
            return;
        const top = item.mapToItem(column, 0, 0).y + column.y - 8;
        const bottom = top + item.height + 16;
        if (top < contentY)
            contentY = Math.max(0, top);
        else if (bottom > contentY + viewHeight)
            contentY = Math.min(contentHeight - height, bottom - viewHeight);
    }

    // Brings the remedy up, with what stands right above it, and hands it the keyboard.
    function showRemedy(): void {
        if (remedy === null)
            return;
        scrollBy(remedy.mapToItem(column, 0, 0).y - 60 - contentY);
        const first = remedy.nextItemInFocusChain();
        if (holds(first))
            first.forceActiveFocus(Qt.TabFocusReason);
    }

    // The nearest control in the row above or below, so that the arrows lead through a list. None at its ends.
    function controlBeyond(item: Item, isBelow: bool): Item {
        const middle = control => control.mapToItem(column, control.width / 2, control.height / 2);
        const start = middle(item);
        let found = null;
        let place = start;
        for (let next = item.nextItemInFocusChain(isBelow); next !== null && next !== item && (holds(next) || isInFooter(next)); next = next.nextItemInFocusChain(isBelow)) {
            const here = middle(next);
            if (Math.abs(here.y - start.y) <= 12)
                continue;
            if (found !== null && Math.abs(here.y - place.y) > 12)
                break;
            if (found === null || Math.abs(here.x - start.x) < Math.abs(place.x - start.x)) {
                found = next;
                place = here;
            }
        }
        return found;
    }

    // The same from where the keyboard is, which may be beside the list.
    function controlTowards(isBelow: bool): Item {
        if (focusItem === null || holds(focusItem) || isInFooter(focusItem))
            return focusItem === null ? null : controlBeyond(focusItem, isBelow);
        const first = focusItem.nextItemInFocusChain(isBelow);
        let next = first;
        while (next !== null && !holds(next)) {
            next = next.nextItemInFocusChain(isBelow);
            if (next === first)
                return null;
        }
        return next;
    }

    function scrollTo(y: real): void {
        contentY = Math.max(0, Math.min(Math.max(0, contentHeight - height), y));
    }

    function scrollBy(distance: real): void {
        scrollTo(contentY + distance);
    }

    // A screenful, or to an end; false when the key means something else.
    function scrollWith(key: int): bool {
        if (key === Qt.Key_PageUp || key === Qt.Key_PageDown)
            scrollBy(key === Qt.Key_PageDown ? viewHeight * 0.85 : -viewHeight * 0.85);
        else if (key === Qt.Key_Home || key === Qt.Key_End)
            scrollBy(key === Qt.Key_End ? contentHeight : -contentHeight);
        else
            return false;
        return true;
    }

    clip: true
    contentWidth: width
    contentHeight: Math.max(column.height + column.y + bottomPadding + footerHeight, keeper.end)
    boundsBehavior: Flickable.StopAtBounds
    flickableDirection: Flickable.VerticalFlick
    pixelAligned: true
    interactive: hands.isTouched
    Keys.onPressed: event => {
        if (event.key === Qt.Key_Up || event.key === Qt.Key_Down) {
            const next = controlTowards(event.key === Qt.Key_Down);
            if (next === null)
                scrollBy(event.key === Qt.Key_Down ? 60 : -60);
            else
                next.forceActiveFocus(Qt.TabFocusReason);
            event.accepted = true;
        } else {
            event.accepted = scrollWith(event.key);
        }
    }
    onFocusItemChanged: {
        hold();
        if (focusItem !== null)
            reveal(focusItem);
    }
    onMayHoldChanged: hold()
    onHeldChanged: {
        keeper.top = held?.y ?? 0;
        if (held === null)
            settling.restart();
        else
            settling.stop();
    }

    Connections {
        id: keeper

        property real top: 0
        // A short page is scrolled beyond its end for that long.
        property real end: 0

        function onYChanged(): void {
            const place = Math.max(0, page.contentY + page.held.y - top);
            top = page.held.y;
            end = place + page.height;
            page.contentY = place;
        }

        target: page.held
    }

    Timer {
        id: settling

        interval: Theme.doubleClickTime
        onTriggered: keeper.end = 0
    }

    // One that only rests where the window came up is at nothing.
    HoverHandler {
        id: pointer

        property bool isUsed: false
        property point first

        onHoveredChanged: {
            first = point.scenePosition;
            page.hold();
        }
        onPointChanged: {
            isUsed = isUsed || hovered && (point.scenePosition.x !== first.x || point.scenePosition.y !== first.y);
            page.hold();
        }
    }

    PointHandler {
        onActiveChanged: {
            pointer.isUsed = true;
            page.hold();
        }
    }

    Column {
        id: column

        anchors.horizontalCenter: parent.horizontalCenter
        width: Math.min(page.width - 2 * page.padding, Theme.columnWidth)
        spacing: 12
    }

    ScrollHands {
        id: hands

        parent: page
        page: page
        viewHeight: page.viewHeight
        onWanted: y => page.scrollTo(y)
    }
}
