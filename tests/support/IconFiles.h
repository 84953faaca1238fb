#pragma once

#include <QtCore/QByteArray>
#include <QtCore/QList>
#include <QtCore/QtEndian>

namespace swabby {

/// What a PNG of that size begins with; enough to be told from others, not to be drawn.
inline QByteArray pngHead(quint32 width, const QByteArray &rest = "rest")
{
    QByteArray head("\x89PNG\r\n\x1a\n\0\0\0\x0dIHDR________", 24);
    qToBigEndian(width, head.data() + 16);
    qToBigEndian(width, head.data() + 20);
    return head + rest;
}

/// An entry of a Mac's icon file.
inline QByteArray iconEntry(const char *type, const QByteArray &content)
{
    QByteArray length(4, '\0');
    qToBigEndian(static_cast<quint32>(content.size() + 8), length.data());
    return type + length + content;
}

inline QByteArray iconFile(const QList<QByteArray> &pictures)
{
    QByteArray entries;
    for (const QByteArray &picture : pictures)
        entries += iconEntry("ic07", picture);
    return iconEntry("icns", entries);
}

/// An Info.plist that names that icon; one that names none when it is empty.
inline QByteArray bundleFacts(const QByteArray &icon)
{
    const QByteArray line =
        icon.isEmpty() ? QByteArray() : "<key>CFBundleIconFile</key><string>" + icon + "</string>";
    return "<?xml version=\"1.0\" encoding=\"UTF-8\"?><plist version=\"1.0\"><dict>"
           "<key>CFBundleIdentifier</key><string>org.example.app</string>" +
           line + "</dict></plist>";
}

} // namespace swabby
