import QtQuick
import Swabby.Ui

// How old the figures are, and the way out.
Item {
    id: footer

    required property PopoverView view

    implicitHeight: 24

    PlainLabel {
        anchors.left: parent.left
        anchors.right: refreshButton.left
        anchors.rightMargin: 4
        anchors.verticalCenter: parent.verticalCenter
        text: footer.view.updated
        font: Theme.hintFont
        color: Theme.secondary
    }

    SymbolButton {
        id: refreshButton

        anchors.right: quitButton.left
        anchors.verticalCenter: parent.verticalCenter
        width: 24
        height: 24
        symbol: "arrow.clockwise"
        symbolSize: 11
        tip: "Refresh now"
        isBusy: footer.view.isRefreshing
        onActivated: footer.view.refresh()
    }

    Pressable {
        id: quitButton

        anchors.right: parent.right
        anchors.rightMargin: -6
        anchors.verticalCenter: parent.verticalCenter
        width: quitLabel.implicitWidth + 12
        height: 24
        name: Words.quit
        opacity: isPressed ? 0.75 : 1
        onActivated: footer.view.quit()

        Rectangle {
            anchors.fill: parent
            radius: 7
            color: quitButton.isHovered ? Theme.quietFill : "transparent"
        }

        PlainLabel {
            id: quitLabel

            anchors.centerIn: parent
            text: quitButton.name
            font: Theme.hintFont
            color: quitButton.isHovered ? Theme.primary : Theme.secondary
            Accessible.ignored: true
        }
    }
}
