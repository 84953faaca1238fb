import QtQuick
import Swabby.Ui

// A line to type in.
FocusScope {
    id: field

    // Not called text: whoever reads the screen is told a property of that name, and this may be a secret.
    property alias content: input.text
    property alias echoMode: input.echoMode
    property alias font: input.font
    property alias color: frame.color
    property alias borderWidth: frame.border.width
    property alias innerRadius: frame.radius
    property string name
    property string placeholder
    property real leading: 12
    property real trailing: 12
    readonly property bool isSecret: echoMode === TextInput.Password

    signal accepted

    function clear(): void {
        input.clear();
    }

    implicitWidth: 220
    implicitHeight: 32
    // A secret's own field is kept from screen readers, so the frame stands for it.
    Accessible.role: isSecret ? Accessible.EditableText : Accessible.Grouping
    Accessible.name: name
    Accessible.focusable: isSecret
    Accessible.focused: isSecret && input.activeFocus
    Accessible.ignored: !isSecret

    Rectangle {
        id: frame

        anchors.fill: parent
        radius: 8
        color: Theme.card
        border.width: 1
        border.color: Theme.hairline
    }

    PlainLabel {
        anchors.fill: input
        text: field.placeholder
        font: field.font
        color: Theme.tertiary
        verticalAlignment: Text.AlignVCenter
        visible: input.text === "" && input.preeditText === ""
        Accessible.ignored: true
    }

    TextInput {
        id: input

        anchors.fill: parent
        anchors.leftMargin: field.leading
        anchors.rightMargin: field.trailing
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
        Accessible.ignored: field.isSecret
        onAccepted: field.accepted()
    }

    FocusRing {
        innerRadius: field.innerRadius
        gap: 0
    }
}
