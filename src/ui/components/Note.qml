import Swabby.Ui

// The same in as many lines as it takes.
Paragraph {
    font: Theme.smallFont
    color: Theme.secondary
}
