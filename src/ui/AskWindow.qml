import QtQuick
import Swabby.Ui

Window {
    id: window

    required property AskView view

    width: 460
    height: 320
    title: "Ask Swabby"
    color: Theme.window
}
