import QtQuick

PlainLabel {
    wrapMode: Text.Wrap
    elide: Text.ElideNone
    lineHeight: 1.15
}
