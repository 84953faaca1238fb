import Swabby.Ui

// A line in small beside or beneath what matters more.
PlainLabel {
    font: Theme.smallFont
    color: Theme.secondary
}
