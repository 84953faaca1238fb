import QtQuick
import Swabby.Ui

Rectangle {
    width: parent === null ? 0 : parent.width
    height: 1
    color: Theme.hairline
}
