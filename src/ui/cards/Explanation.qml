import QtQuick
import Swabby.Ui

Column {
    id: explanation

    property string heading
    property string text

    spacing: 1

    PlainLabel {
        width: parent.width
        text: explanation.heading
        font: Theme.smallHeadingFont
        color: Theme.secondary
        Accessible.role: Accessible.Heading
    }

    Paragraph {
        width: parent.width
        text: explanation.text
        font: Theme.smallFont
    }
}
