pragma ComponentBehavior: Bound
import QtQuick
import Swabby.Ui

// Shows the wanted tooltip under its control, after a moment.
Item {
    id: bubble

    readonly property Item target: Hints.target !== null && Hints.target.Window.window === Window.window ? Hints.target : null

    function place(): void {
        const below = target.mapToItem(parent, target.width / 2, target.height + 6);
        const fits = below.y + height <= parent.height - 4;
        x = Math.max(4, Math.min(parent.width - width - 4, below.x - width / 2));
        y = fits ? below.y : target.mapToItem(parent, 0, 0).y - height - 6;
        visible = true;
    }

    visible: false
    z: 100
    width: Math.min(label.implicitWidth, 320, (parent?.width ?? 348) - 28) + 20
    height: label.height + 12
    onTargetChanged: {
        visible = false;
        target !== null ? delay.restart() : delay.stop();
    }

    FloatingShadow {
        innerRadius: 6
    }

    Rectangle {
        anchors.fill: parent
        radius: 6
        color: Theme.isDark ? "#3a3a3e" : "#fdfdfe"
        border.width: 1
        border.color: Theme.hairline
    }

    Timer {
        id: delay

        interval: 600
        onTriggered: bubble.place()
    }

    Paragraph {
        id: label

        x: 10
        y: 6
        width: parent.width - 20
        text: Hints.text
        maximumLineCount: 8
        elide: Text.ElideRight
        font: Theme.smallFont
        Accessible.ignored: true
    }
}
