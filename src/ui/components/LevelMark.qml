import QtQuick
import Swabby.Ui

// What a figure's colour warns of, for whoever does not see colours: red has a triangle, orange a circle.
SymbolItem {
    property int tint: 0
    readonly property bool isGrave: tint === Tints.red

    implicitWidth: 14
    implicitHeight: 14
    name: isGrave ? "exclamationmark.triangle.fill" : "exclamationmark.circle.fill"
    color: Theme.marks[tint]
    visible: isGrave || tint === Tints.orange
    Accessible.role: Accessible.Graphic
    Accessible.name: isGrave ? "Warning" : "High"
}
