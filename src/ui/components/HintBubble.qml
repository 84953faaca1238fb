pragma ComponentBehavior: Bound
import QtQuick
import Swabby.Ui

// Shows the wanted tooltip under its control, after a moment, for as long as that stays where it is.
Item {
    id: bubble

    readonly property Item target: Hints.target !== null && Hints.target.Window.window === Window.window ? Hints.target : null
    readonly property bool isStanding: target !== null && target.visible && Window.visibility !== Window.Hidden
    property point corner

    function cornerNow(): point {
        return target.mapToItem(parent, 0, 0);
    }

    function place(): void {
        const below = target.mapToItem(parent, target.width / 2, target.height + 6);
        const fits = below.y + height <= parent.height - 4;
        corner = cornerNow();
        x = Math.max(4, Math.min(parent.width - width - 4, below.x - width / 2));
        y = fits ? below.y : corner.y - height - 6;
        visible = true;
    }

    visible: false
    z: 100
    width: Math.min(label.implicitWidth, Hints.text.length > 160 ? 480 : 320, (parent?.width ?? 348) - 28) + 20
    height: label.height + 12
    onTargetChanged: {
        visible = false;
        target !== null ? delay.restart() : delay.stop();
    }
    onIsStandingChanged: if (!isStanding) {
        visible = false;
        delay.stop();
        leaving.restart();
    }

    // Rows are scrolled, sorted anew and taken away under a pointer that rests.
    Connections {
        function onAfterAnimating(): void {
            if (bubble.cornerNow() !== bubble.corner)
                Hints.hide(bubble.target);
        }

        target: bubble.Window.window
        enabled: bubble.visible && bubble.target !== null
    }

    CutText {
        property Text shown: null

        onPointedAtChanged: {
            if (shown !== null)
                Hints.hide(shown);
            // What has the keyboard wants its own shown, too, but is not pointed at.
            shown = (Hints.target as Pressable)?.isHovered ? null : pointedAt as Text;
            if (shown !== null)
                Hints.show(shown, shown.text);
        }
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

    // Not at once: whether it stands follows from what is wanted.
    Timer {
        id: leaving

        interval: 0
        onTriggered: if (bubble.target !== null && !bubble.isStanding)
            Hints.hide(bubble.target)
    }

    Paragraph {
        id: label

        x: 10
        y: 6
        width: parent.width - 20
        text: Hints.text
        maximumLineCount: 24
        elide: Text.ElideRight
        font: Theme.smallFont
        Accessible.ignored: true
    }
}
