import QtQuick

// As large as what it holds, and told so to window managers, which leave such a window as it is.
Window {
    id: window

    property real wantedHeight: 0

    // A window manager keeps a window to the bounds it was told last: the one in the way goes first.
    function fit(): void {
        if (wantedHeight > maximumHeight)
            maximumHeight = wantedHeight;
        else
            minimumHeight = wantedHeight;
        height = wantedHeight;
        minimumHeight = wantedHeight;
        maximumHeight = wantedHeight;
    }

    minimumWidth: width
    maximumWidth: width
    onWantedHeightChanged: fit()
    Component.onCompleted: fit()
}
