import QtQuick
import Swabby.Ui

// A line in the middle of a card, mostly in place of what there is none of.
PlainLabel {
    width: parent === null ? 0 : parent.width
    horizontalAlignment: Text.AlignHCenter
    color: Theme.secondary
}
