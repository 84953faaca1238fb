pragma Singleton
import QtQuick

// The places of the tints in Theme's lists.
QtObject {
    readonly property int accent: 0
    readonly property int green: 1
    readonly property int orange: 2
    readonly property int red: 3
}
