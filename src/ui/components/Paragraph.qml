import QtQuick
import Swabby.Ui

PlainLabel {
    readonly property real room: Theme.roomForLastLine(text, font, width)

    wrapMode: Text.Wrap
    elide: Text.ElideNone
    lineHeight: 1.15
    leftPadding: horizontalAlignment === Text.AlignHCenter ? room / 2 : 0
    rightPadding: room - leftPadding
}
