import QtQuick
import Swabby.Ui

ScrollPage {
    id: page

    required property MainWindowView view
}
