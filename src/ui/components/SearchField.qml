import QtQuick
import Swabby.Ui

FocusScope {
    id: field

    property alias text: input.text
    property string placeholder

    implicitWidth: 220
    implicitHeight: 28

    Rectangle {
        anchors.fill: parent
        radius: 7
        color: Theme.quietFill
    }

    PlainLabel {
        anchors.fill: input
        text: field.placeholder
        font: Theme.subtitleFont
        color: Theme.tertiary
        verticalAlignment: Text.AlignVCenter
        visible: input.text === "" && input.preeditText === ""
        Accessible.ignored: true
    }

    TextInput {
        id: input

        anchors.fill: parent
        anchors.leftMargin: 10
        anchors.rightMargin: 28
        focus: true
        activeFocusOnTab: true
        clip: true
        font: Theme.subtitleFont
        color: Theme.primary
        selectionColor: Theme.accentFill
        selectedTextColor: Theme.onAccent
        selectByMouse: true
        verticalAlignment: TextInput.AlignVCenter
        Accessible.role: Accessible.EditableText
        Accessible.name: field.placeholder
        Keys.onEscapePressed: event => {
            event.accepted = text !== "";
            clear();
        }
    }

    SymbolButton {
        anchors.right: parent.right
        anchors.rightMargin: 2
        anchors.verticalCenter: parent.verticalCenter
        width: 24
        height: 24
        symbol: "xmark"
        symbolSize: 10
        tip: "Clear the search"
        visible: input.text !== ""
        onActivated: {
            input.clear();
            input.forceActiveFocus();
        }
    }

    FocusRing {
    }
}
