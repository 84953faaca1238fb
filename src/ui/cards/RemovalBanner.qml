import QtQuick
import Swabby.Ui

// What the last removal did, for as long as that is news.
Card {
    id: banner

    required property RemovalBannerView removal

    isPaper: false
    fill: Theme.washes[Tints.green]
    verticalPadding: 4
    visible: removal.text !== ""

    Item {
        width: parent.width
        height: 28

        SymbolItem {
            id: mark

            anchors.verticalCenter: parent.verticalCenter
            width: 18
            height: 18
            name: "checkmark.circle.fill"
            color: Theme.marks[Tints.green]
            visible: !banner.removal.isRemoving
        }

        Spinner {
            anchors.verticalCenter: parent.verticalCenter
            visible: banner.removal.isRemoving
        }

        PlainLabel {
            id: words

            anchors.left: mark.right
            anchors.leftMargin: 10
            anchors.right: back.left
            anchors.rightMargin: 12
            anchors.verticalCenter: parent.verticalCenter
            text: banner.removal.text
            font: Theme.bannerFont
            color: Theme.inks[Tints.green]
            Accessible.role: Accessible.AlertMessage
        }

        ActionButton {
            id: back

            anchors.right: parent.right
            anchors.verticalCenter: parent.verticalCenter
            text: "Put back"
            width: visible ? implicitWidth : 0
            visible: banner.removal.canPutBack && !banner.removal.isRemoving
            onActivated: banner.removal.putBack()
        }
    }
}
