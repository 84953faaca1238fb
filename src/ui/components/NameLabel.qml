import Swabby.Ui

// What something is called.
PlainLabel {
}
