import QtQuick
import Swabby.Ui

Window {
    id: window

    required property SettingsView view

    width: 460
    height: 320
    title: "Settings"
    color: Theme.window
}
