import QtQuick
import Swabby.Ui

// Narrows the page's list of programs, for as long as the page is shown.
SearchField {
    id: field

    required property MainWindowView view

    placeholder: "Search apps and programs"
    onTextChanged: view.state.searchText = text
    Component.onDestruction: view.state.searchText = ""
}
