import QtQuick
import Swabby.Ui

RingGauge {
    id: spinner

    width: 16
    height: 16
    thickness: 2
    fraction: 0.3
    color: Theme.secondary
    trackColor: Theme.hairline

    Accessible.role: Accessible.Animation
    Accessible.name: "Working"
    Accessible.ignored: !visible

    RotationAnimator on rotation {
        running: spinner.visible && Theme.moves
        loops: Animation.Infinite
        from: 0
        to: 360
        duration: 900
    }
}
