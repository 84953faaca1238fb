pragma ComponentBehavior: Bound
import QtQuick
import Swabby.Ui

// A figure that changes in place: every digit takes the same room, so that nothing beside it moves. Where it
// does not fit it is an ordinary label.
Item {
    id: figure

    property string text
    property font font: Theme.bodyFont
    property color color: Theme.primary
    property int horizontalAlignment: Text.AlignLeft
    property int elide: Text.ElideRight
    property bool isTabular: true
    readonly property var parts: text.length > 40 ? [] : text.match(/[0-9]|[^0-9]+/g) ?? []
    readonly property real tabularWidth: row.implicitWidth
    readonly property bool isWhole: isTabular && text.length <= 40 && tabularWidth <= width + 0.5

    implicitWidth: isTabular ? tabularWidth : plain.implicitWidth
    implicitHeight: zero.implicitHeight
    baselineOffset: zero.baselineOffset
    Accessible.role: Accessible.StaticText
    Accessible.name: text
    Accessible.ignored: text === ""

    PlainLabel {
        id: zero

        text: "0"
        font: figure.font
        visible: false
    }

    Row {
        id: row

        x: figure.horizontalAlignment === Text.AlignRight ? figure.width - width : figure.horizontalAlignment === Text.AlignHCenter ? Math.round((figure.width - width) / 2) : 0
        // Hidden by its opacity, for what is invisible takes no room and could not be measured.
        opacity: figure.isWhole ? 1 : 0

        Repeater {
            // Their number, so that another figure of as many digits takes their labels over.
            model: figure.parts.length

            PlainLabel {
                required property int index

                width: text >= "0" && text <= "9" && text.length === 1 ? Math.round(zero.implicitWidth) : implicitWidth
                horizontalAlignment: Text.AlignHCenter
                elide: Text.ElideNone
                text: figure.parts[index] ?? ""
                font: figure.font
                color: figure.color
                Accessible.ignored: true
            }
        }
    }

    PlainLabel {
        id: plain

        width: figure.width
        horizontalAlignment: figure.horizontalAlignment
        elide: figure.elide
        text: figure.text
        font: figure.font
        color: figure.color
        visible: !figure.isWhole
        Accessible.ignored: true
    }
}
