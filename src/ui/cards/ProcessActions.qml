import QtQuick
import Swabby.Ui

// What can be done about a program.
Row {
    id: actions

    required property MainWindowView view
    required property processRowText entry
    property bool hasPin: false
    property bool isTight: false

    spacing: 8

    ActionButton {
        anchors.verticalCenter: parent.verticalCenter
        implicitHeight: 24
        text: "What is this?"
        name: "What is this? " + actions.entry.name
        visible: !actions.isTight
        onActivated: actions.view.explainProcess(actions.entry.pid)
    }

    ActionButton {
        anchors.verticalCenter: parent.verticalCenter
        implicitHeight: 24
        text: "Quit"
        name: "Quit " + actions.entry.name
        onActivated: actions.view.quitProcess(actions.entry.pid)
    }

    SymbolButton {
        anchors.verticalCenter: parent.verticalCenter
        width: 24
        height: 24
        symbolSize: 13
        symbol: actions.entry.isPinned ? "pin.fill" : "pin"
        symbolColor: actions.entry.isPinned ? Theme.accent : Theme.secondary
        tip: actions.entry.isPinned ? "Unpin app" : "Pin app"
        name: tip + ": " + actions.entry.name
        visible: actions.hasPin
        onActivated: actions.view.togglePin(actions.entry.pid)
    }

    MoreMenu {
        anchors.verticalCenter: parent.verticalCenter
        subject: actions.entry.name
        labels: actions.isTight ? ["What is this?", "Force Quit"] : ["Force Quit"]
        hint: labels[labels.length - 1] === "Force Quit" ? "This shuts it down immediately without saving state. Use only if a normal quit didn't work." : ""
        onChosen: index => {
            if (labels[index] === "Force Quit")
                actions.view.forceQuitProcess(actions.entry.pid);
            else
                actions.view.explainProcess(actions.entry.pid);
        }
    }
}
