import QtQuick
import Swabby.Ui

Rectangle {
    height: 1
    color: Theme.hairline
}
