pragma ComponentBehavior: Bound
import QtQuick
import Swabby.Ui

// Under what floats over the page, a menu or a tooltip, to lift it off the rows beneath.
Item {
    id: shadow

    property real innerRadius: 7
    property int layers: 4

    anchors.fill: parent

    Repeater {
        model: shadow.layers

        Rectangle {
            required property int index

            anchors.fill: parent
            anchors.margins: -1 - 2 * index
            anchors.topMargin: 1 - index
            anchors.bottomMargin: -2 - 3 * index
            radius: shadow.innerRadius + 1 + 2 * index
            color: Qt.rgba(0, 0, 0, (Theme.isDark ? 0.48 : 0.12) / shadow.layers)
        }
    }
}
