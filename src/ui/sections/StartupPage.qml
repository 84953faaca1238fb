import QtQuick
import Swabby.Ui

// What launches when a person logs in.
ScrollPage {
    id: page

    required property MainWindowView view

    StartupCard {
        width: parent.width
        heading: "Worth a second look"
        rows: page.view.state.startupToReview
    }

    StartupCard {
        width: parent.width
        heading: "Everything else"
        rows: page.view.state.startupRest
    }

    Card {
        width: parent.width
        visible: page.view.state.startupToReview.count + page.view.state.startupRest.count === 0

        PlainLabel {
            width: parent.width
            horizontalAlignment: Text.AlignHCenter
            text: "Nothing starts by itself when you log in."
            color: Theme.secondary
        }
    }
}
