import QtQuick
import Swabby.Ui

// The main window's question.
ConfirmSheet {
    required property MainWindowView view

    confirmation: view.coordinator.confirmation
}
