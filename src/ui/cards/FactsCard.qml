pragma ComponentBehavior: Bound
import QtQuick
import Swabby.Ui

// What is known, each beside what it is about; a long path takes the lines it needs.
Rectangle {
    id: card

    property var facts: []

    implicitHeight: column.height + 20
    radius: 8
    color: "transparent"
    border.width: 1
    border.color: Theme.hairline

    Column {
        id: column

        x: 12
        y: 10
        width: parent.width - 24
        spacing: 5

        Repeater {
            model: card.facts

            Item {
                id: row

                required property explainFact modelData

                width: column.width
                height: value.height
                Accessible.role: Accessible.StaticText
                Accessible.name: modelData.label + ": " + modelData.value

                Remark {
                    text: row.modelData.label
                    lineHeight: value.lineHeight
                    Accessible.ignored: true
                }

                Note {
                    id: value

                    x: 88
                    width: parent.width - x
                    text: row.modelData.value
                    color: Theme.primary
                    wrapMode: Text.WrapAtWordBoundaryOrAnywhere
                    Accessible.ignored: true
                }
            }
        }
    }
}
