import QtQuick
import Swabby.Ui

// What can be done about a program.
Row {
    id: actions

    required property MainWindowView view
    required property processRowText entry
    property bool hasPin: false
    // What stands beside it stays in its column.
    readonly property bool keepsRoom: !entry.canQuit

    spacing: 8

    RowButton {
        text: Words.explain
        name: text + " " + actions.entry.name
        onActivated: actions.view.explainProcess(actions.entry.pid)
    }

    RowButton {
        id: quit

        text: "Quit"
        name: text + " " + actions.entry.name
        visible: actions.entry.canQuit
        onActivated: actions.view.quitProcess(actions.entry.pid)
    }

    Item {
        width: quit.width
        height: 1
        visible: actions.keepsRoom
    }

    SymbolButton {
        width: 24
        height: 24
        symbolSize: 13
        symbol: actions.entry.isPinned ? "pin.fill" : "pin"
        symbolColor: actions.entry.isPinned ? Theme.accent : Theme.secondary
        tip: actions.entry.pinLabel
        name: tip + ": " + actions.entry.name
        visible: actions.hasPin
        onActivated: actions.view.togglePin(actions.entry.pid)
    }

    MoreMenu {
        id: more

        subject: actions.entry.name
        visible: actions.entry.canQuit
        entries: actions.view.processMenu
        onChosen: command => actions.view.follow(command, actions.entry.pid)
    }

    Item {
        width: more.width
        height: 1
        visible: actions.keepsRoom
    }
}
