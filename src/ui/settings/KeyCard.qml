import QtQuick
import Swabby.Ui

// The person's own key: stored, tried and removed.
Card {
    id: card

    required property KeyView key

    function save(): void {
        card.key.save(field.content);
        field.clear();
    }

    spacing: 10

    CardHeading {
        text: "Your own key"
    }

    Note {
        width: parent.width
        text: "With an Anthropic API key of yours, questions go straight there. The key is kept with your passwords and never shown again."
    }

    Row {
        id: entry

        width: parent.width
        spacing: 8

        TextField {
            id: field

            // Room is kept for the key's removal, so that nothing slides when there is a key.
            width: entry.width - saveButton.width - removeButton.width - 16
            implicitHeight: 28
            name: "API key"
            placeholder: card.key.placeholder
            echoMode: TextInput.Password
            onAccepted: card.save()
        }

        ActionButton {
            id: saveButton

            text: "Save key"
            isProminent: field.content !== ""
            isBusy: card.key.isBusy
            onActivated: card.save()
        }

        ActionButton {
            id: removeButton

            text: "Remove key"
            isBusy: card.key.isBusy
            visible: card.key.isStored
            onActivated: card.key.remove()
        }
    }

    // Room is kept for the longest sentence, so that nothing below slides when another one comes.
    Row {
        width: parent.width
        height: Math.max(room.implicitHeight, sentence.implicitHeight)
        spacing: 8

        SymbolItem {
            y: 1
            name: card.key.isGood ? "checkmark.circle.fill" : "key"
            color: card.key.isGood ? Theme.marks[Tints.green] : Theme.secondary
            visible: !card.key.isBusy && card.key.sentence !== ""
        }

        Spinner {
            visible: card.key.isBusy
        }

        Note {
            id: sentence

            width: parent.width - 24
            text: card.key.sentence
        }

        Note {
            id: room

            text: "\n\n"
            visible: false
        }
    }
}
