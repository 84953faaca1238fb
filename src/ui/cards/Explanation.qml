import QtQuick
import Swabby.Ui

Column {
    id: explanation

    property string heading
    property string text
    property font headingFont: Theme.smallHeadingFont
    property color headingColor: Theme.secondary
    property font textFont: Theme.smallFont
    property color textColor: Theme.primary

    spacing: 1

    PlainLabel {
        width: parent.width
        text: explanation.heading
        font: explanation.headingFont
        color: explanation.headingColor
        Accessible.role: Accessible.Heading
    }

    Paragraph {
        width: parent.width
        text: explanation.text
        font: explanation.textFont
        color: explanation.textColor
    }
}
