import QtQuick
import Swabby.Ui

// What something is called; where there is no room for all of it, its tooltip has the rest.
PlainLabel {
    id: label

    HoverHandler {
        onHoveredChanged: hovered && label.truncated ? Hints.show(label, label.text) : Hints.hide(label)
    }
}
