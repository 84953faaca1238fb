import QtQuick
import Swabby.Ui

// A sheet's paper: a header, a body that scrolls when the window is low, and a footer.
FocusScope {
    id: sheet

    property alias header: headerSlot.data
    default property alias body: scroll.content
    property alias footer: footerSlot.data
    property string name
    property real headerHeight: 28
    property real inset: 18
    // Once something unfolds in it, it grows towards the bottom only, and nothing moves under the pointer.
    property bool keepsTop: false

    signal dismissed
    signal confirmed

    implicitWidth: 380
    height: Math.min(scroll.y + scroll.contentHeight + 12 + footerSlot.height + inset, (parent?.parent?.height ?? 640) - (keepsTop ? parent.y + 24 : 48))
    focus: true
    Keys.onPressed: event => {
        if (event.key === Qt.Key_Up || event.key === Qt.Key_Down)
            scroll.scrollBy(event.key === Qt.Key_Down ? 60 : -60);
        else
            event.accepted = scroll.scrollWith(event.key);
    }
    Accessible.role: Accessible.Dialog
    Accessible.name: name
    Keys.forwardTo: [scroll]

    Repeater {
        model: Theme.isDark ? 0 : 3

        Rectangle {
            required property int index

            anchors.fill: parent
            anchors.margins: -2 - 5 * index
            anchors.topMargin: 4 - 3 * index
            anchors.bottomMargin: -8 - 6 * index
            radius: 16 + 5 * index
            color: Theme.shadow
        }
    }

    Rectangle {
        anchors.fill: parent
        radius: 14
        color: Theme.card
        border.width: Theme.isDark ? 1 : 0
        border.color: Theme.hairline
    }

    Item {
        id: headerSlot

        x: sheet.inset
        y: sheet.inset
        width: parent.width - 2 * sheet.inset
        height: sheet.headerHeight
    }

    ScrollPage {
        id: scroll

        x: 2
        y: headerSlot.y + headerSlot.height + (headerSlot.height > 0 ? 12 : 0)
        width: parent.width - 4
        height: footerSlot.y - y - 12
        padding: sheet.inset - 2
        bottomPadding: 4
        spacing: 10
    }

    Item {
        id: footerSlot

        x: sheet.inset
        y: parent.height - height - sheet.inset
        width: parent.width - 2 * sheet.inset
        height: 32
    }
}
