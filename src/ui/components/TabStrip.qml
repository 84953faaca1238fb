pragma ComponentBehavior: Bound
import QtQuick
import Swabby.Ui

// A window's pages, each a symbol over a word. The arrows move between them.
FocusScope {
    id: strip

    property var labels: []
    property var symbols: []
    property int current: 0
    property string name

    signal chosen(int index)

    function choose(index: int): void {
        strip.chosen(Math.max(0, Math.min(labels.length - 1, index)));
    }

    implicitHeight: 54
    activeFocusOnTab: true
    Accessible.role: Accessible.PageTabList
    Accessible.name: name
    Keys.onLeftPressed: choose(current - 1)
    Keys.onRightPressed: choose(current + 1)

    Row {
        anchors.horizontalCenter: parent.horizontalCenter
        spacing: 6

        Repeater {
            model: strip.labels

            Item {
                id: tab

                required property string modelData
                required property int index
                readonly property bool isCurrent: strip.current === index
                readonly property color ink: isCurrent ? Theme.inks[Tints.accent] : area.containsMouse ? Theme.primary : Theme.secondary

                width: Math.max(56, Math.ceil(label.implicitWidth) + 28)
                height: 50
                Accessible.role: Accessible.PageTab
                Accessible.name: modelData
                Accessible.selected: isCurrent
                Accessible.onPressAction: if (tab.enabled)
                    strip.choose(index)

                Rectangle {
                    anchors.fill: parent
                    radius: 9
                    color: Theme.quietFill
                    visible: tab.isCurrent || area.containsMouse
                }

                SymbolItem {
                    anchors.horizontalCenter: parent.horizontalCenter
                    y: 8
                    name: strip.symbols[tab.index]
                    color: tab.ink
                }

                PlainLabel {
                    id: label

                    anchors.horizontalCenter: parent.horizontalCenter
                    y: 27
                    text: tab.modelData
                    font: Theme.hintFont
                    color: tab.ink
                    Accessible.ignored: true
                }

                MouseArea {
                    id: area

                    anchors.fill: parent
                    hoverEnabled: true
                    onClicked: strip.choose(tab.index)
                }

                FocusRing {
                    innerRadius: 9
                    visible: tab.isCurrent && strip.activeFocus
                }
            }
        }
    }
}
