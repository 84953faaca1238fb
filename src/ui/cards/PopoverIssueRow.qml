import QtQuick
import Swabby.Ui

Pressable {
    id: row

    property issueCard issue
    readonly property bool isGrave: issue.tint === Tints.red

    name: issue.severity + ": " + issue.what
    implicitHeight: Math.max(28, words.implicitHeight + 14)

    Rectangle {
        anchors.fill: parent
        anchors.margins: 3
        radius: 6
        color: Theme.quietFill
        visible: row.isHovered
    }

    Rectangle {
        x: 14
        y: 12
        width: 7
        height: 7
        radius: 3.5
        color: Theme.marks[row.issue.tint]
        visible: !row.isGrave
    }

    SymbolItem {
        x: 11.5
        y: 9
        width: 12
        height: 12
        name: "exclamationmark.triangle.fill"
        color: Theme.marks[row.issue.tint]
        visible: row.isGrave
    }

    Paragraph {
        id: words

        x: 33
        y: 7
        width: parent.width - 44
        text: row.issue.what
        font: Theme.smallFont
        Accessible.ignored: true
    }

    FocusRing {
        anchors.margins: 1
        innerRadius: 4
    }
}
