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
    // Its menu has the keyboard then, and typing goes on afterwards.
    property bool isMenuOpen: false

    signal accepted

    function clear(): void {
        input.clear();
    }

    function openMenu(x: real, y: real): void {
        menu.active = true;
        const unfolded = menu.item as MoreMenu;
        unfolded.isOpen = false;
        const isSelected = input.selectedText !== "" && !isSecret;
        unfolded.entries = Words.textMenu(input.text !== "", isSelected, input.canPaste);
        const room = Window.width - 8 - mapToItem(null, 0, 0).x;
        unfolded.x = Math.min(x, room - unfolded.width);
        unfolded.y = y;
        settled.stop();
        isMenuOpen = true;
        unfolded.isOpen = true;
    }

    function goOnTyping(): void {
        input.forceActiveFocus();
        settled.restart();
    }

    // In the order of the menu.
    function edit(command: int): void {
        input.forceActiveFocus();
        [() => input.cut(), () => input.copy(), () => input.paste(), () => input.selectAll()][command]();
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
        persistentSelection: field.isMenuOpen
        verticalAlignment: TextInput.AlignVCenter
        Accessible.role: Accessible.EditableText
        Accessible.name: field.name
        Accessible.ignored: field.isSecret
        onAccepted: field.accepted()
        Keys.onPressed: event => {
            event.accepted = event.key === Qt.Key_Menu || (event.key === Qt.Key_F10 && event.modifiers === Qt.ShiftModifier);
            if (event.accepted)
                field.openMenu(input.x + input.cursorRectangle.x, input.height);
        }
    }

    MouseArea {
        anchors.fill: input
        acceptedButtons: Qt.RightButton
        cursorShape: Qt.IBeamCursor
        onClicked: mouse => {
            const place = input.positionAt(mouse.x);
            input.forceActiveFocus();
            if (place < input.selectionStart || place > input.selectionEnd)
                input.cursorPosition = place;
            field.openMenu(input.x + mouse.x, mouse.y);
        }
    }

    // Stands where the menu unfolds, and is hardly ever wanted.
    Loader {
        id: menu

        active: false
        sourceComponent: MoreMenu {
            width: 150
            height: 0
            opacity: 0
            activeFocusOnTab: false
            tip: ""
            name: "Edit"
            Accessible.ignored: true
            onChosen: command => field.edit(command)
        }
    }

    Connections {
        function onIsOpenChanged(): void {
            if (!(menu.item as MoreMenu).isOpen)
                field.goOnTyping();
        }

        target: menu.item as MoreMenu
    }

    // The keyboard passes to and fro until what was chosen is done, and what is selected stays so.
    Timer {
        id: settled

        interval: 0
        onTriggered: {
            input.forceActiveFocus();
            field.isMenuOpen = false;
        }
    }

    FocusRing {
        innerRadius: field.innerRadius
        gap: 0
    }
}
