pragma Singleton
import QtQuick

// The tooltip that is wanted right now.
QtObject {
    id: hints

    property Item target: null
    property string text

    function show(item: Item, words: string): void {
        if (words === "")
            return;
        hints.text = words;
        hints.target = item;
    }

    function hide(item: Item): void {
        if (hints.target === item)
            hints.target = null;
    }
}
