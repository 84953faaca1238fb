import QtQuick
import Swabby.Ui

Window {
    id: window

    required property PopoverView view

    width: 460
    height: 320
    title: "Swabby"
    color: Theme.window
}
