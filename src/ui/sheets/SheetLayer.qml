import QtQuick
import Swabby.Ui

// The main window's sheets, the most pressing one on top.
SheetHost {
    id: layer

    required property MainWindowView view
    readonly property ConfirmationView confirmation: view.coordinator.confirmation
    readonly property ExplainView explanation: view.coordinator.explanation

    given: ({
            "view": view
        })
    wanted: {
        if (view.showLastWindowNotice)
            return "LastWindowSheet.qml";
        if (confirmation.isOpen)
            return "WindowConfirmSheet.qml";
        if (explanation.isOpen)
            return "ExplainSheet.qml";
        if (view.showHealthDetail)
            return "HealthDetailSheet.qml";
        return view.showWelcome ? "WelcomeSheet.qml" : "";
    }

    onDismissed: {
        if (view.showLastWindowNotice)
            view.showLastWindowNotice = false;
        else if (confirmation.isOpen)
            confirmation.cancel();
        else if (explanation.isOpen)
            explanation.close();
        else if (view.showHealthDetail)
            view.showHealthDetail = false;
        else
            view.finishWelcome();
    }
}
