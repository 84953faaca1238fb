import QtQuick
import Swabby.Ui

// An ellipsis that unfolds a few further actions. Arrows move in it, Return chooses, Escape folds it.
SymbolButton {
    id: button

    property var entries: []
    property string subject
    property bool isOpen: false

    signal chosen(command: int)

    function choose(index: int): void {
        if (!entries[index].isAvailable)
            return;
        isOpen = false;
        forceActiveFocus();
        chosen(entries[index].command);
    }

    width: 28
    height: 24
    symbol: "ellipsis"
    tip: "More"
    name: "More: " + subject
    Accessible.role: Accessible.ButtonMenu
    onActivated: isOpen = !isOpen
    // Its row may scroll or go away, and stand for something else when it comes back.
    onVisibleChanged: if (!visible)
        isOpen = false
    onIsOpenChanged: {
        if (isOpen)
            cover.setSource("MoreMenuCover.qml", {
                "button": button
            });
        else
            cover.source = "";
    }

    // Every row has such a button, and hardly one of them is ever pressed.
    Loader {
        id: cover

        parent: button.Window.contentItem
        anchors.fill: parent
        z: 90
    }
}
