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

    signal dismissed
    signal confirmed

    implicitWidth: 380
    height: Math.min(headerSlot.height + scroll.contentHeight + footerSlot.height + 60, (parent?.parent?.height ?? 640) - 48)
    focus: true
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

        x: 18
        y: 18
        width: parent.width - 36
        height: sheet.headerHeight
    }

    ScrollPage {
        id: scroll

        x: 2
        y: headerSlot.y + headerSlot.height + (headerSlot.height > 0 ? 12 : 0)
        width: parent.width - 4
        height: footerSlot.y - y - 12
        padding: 16
        spacing: 10
    }

    Item {
        id: footerSlot

        x: 18
        y: parent.height - height - 18
        width: parent.width - 36
        height: 32
    }
}
