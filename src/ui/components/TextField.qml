import QtQuick
import Swabby.Ui

// A line to type in.
FocusScope {
    id: field

    property alias text: input.text
    property alias echoMode: input.echoMode
    property string name
    property string placeholder
    property real trailing: 0

    signal accepted

    function clear(): void {
        input.clear();
    }

    implicitWidth: 220
    implicitHeight: 32
    // What is typed as a secret says nothing to anybody, not even its name, so the frame says it.
    Accessible.role: Accessible.Grouping
    Accessible.name: name

    Rectangle {
        anchors.fill: parent
        radius: 8
        color: Theme.card
        border.width: 1
        border.color: Theme.hairline
    }

    PlainLabel {
        anchors.fill: input
        text: field.placeholder
        color: Theme.tertiary
        verticalAlignment: Text.AlignVCenter
        visible: input.text === "" && input.preeditText === ""
        Accessible.ignored: true
    }

    TextInput {
        id: input

        anchors.fill: parent
        anchors.leftMargin: 12
        anchors.rightMargin: 12 + field.trailing
        focus: true
        activeFocusOnTab: true
        clip: true
        font: Theme.bodyFont
        color: Theme.primary
        selectionColor: Theme.accentFill
        selectedTextColor: Theme.onAccent
        selectByMouse: true
        verticalAlignment: TextInput.AlignVCenter
        Accessible.role: Accessible.EditableText
        Accessible.name: field.name
        Accessible.passwordEdit: field.echoMode === TextInput.Password
        onAccepted: field.accepted()
    }

    FocusRing {
        innerRadius: 8
    }
}
