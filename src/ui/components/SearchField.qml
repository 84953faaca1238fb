import QtQuick
import Swabby.Ui

TextField {
    id: field

    property alias text: field.content

    implicitHeight: 28
    name: placeholder
    font: Theme.subtitleFont
    color: Theme.quietFill
    borderWidth: 0
    innerRadius: 7
    leading: 10
    trailing: 28
    Keys.onEscapePressed: event => {
        event.accepted = text !== "";
        clear();
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
        visible: field.text !== ""
        onActivated: {
            field.clear();
            field.forceActiveFocus();
        }
    }
}
