import Swabby.Ui

// A button that lies in a row, beside others that say the same of another subject.
ActionButton {
    property string subject

    implicitHeight: 24
    name: text + ": " + subject
}
