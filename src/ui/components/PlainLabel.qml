import QtQuick
import Swabby.Ui

// All text of the product: what programs call themselves is never read as markup.
Text {
    textFormat: Text.PlainText
    color: Theme.primary
    font: Theme.bodyFont
    elide: Text.ElideRight

    Accessible.role: Accessible.StaticText
    Accessible.name: text
    Accessible.focusable: false
    Accessible.ignored: text === ""
}
