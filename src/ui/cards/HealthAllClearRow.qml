import QtQuick
import Swabby.Ui

Row {
    id: row

    property string text

    spacing: 10

    SymbolItem {
        y: 1
        width: 18
        height: 18
        name: "checkmark.circle.fill"
        color: Theme.marks[Tints.green]
    }

    Paragraph {
        width: row.width - 28
        text: row.text
    }
}
