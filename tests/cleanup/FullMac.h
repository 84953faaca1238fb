#pragma once

#include "cleanup/Clutter.h"
#include "state/AppState.h"

namespace swabby {

/// A described Mac with something for every engine, once each except for two unknown caches.
class FullMac : public Clutter {
public:
    explicit FullMac(const QJsonObject &facts = {}) : Clutter(facts)
    {
        addFolder(u"Library/Caches/pip"_qs, 5'000);
        addFolder(u"Library/Caches/org.example.loom"_qs, 30'000);
        addFolder(u"Library/Caches/odd"_qs, 25'000);
        for (const char *copy : {"Downloads/report.pdf", "Desktop/report again.pdf"})
            writeFile(u"home/"_qs + QString::fromLatin1(copy), QByteArray(5'000, 'r'));
        addTool(u"/usr/bin/xcrun"_qs,
                R"(echo '{"4B0E": {"identifier": "4B0E", "sizeBytes": 7000000000, "version": "17.2",
"runtimeIdentifier": "com.apple.CoreSimulator.SimRuntime.iOS-17-2"}}')");
        addFolder(u"Library/Developer/Xcode/DerivedData"_qs, 700);
        addTool(u"/usr/local/bin/docker"_qs, "printf 'Images\\t1.2GB (50%%)\\n'");
        addTool(u"/usr/bin/env"_qs, ":");
        addFolder(u"Projects/old/node_modules"_qs, 60'000);
        age(u"Projects/old"_qs, 40 * day);
        addFile(u"Downloads/setup.dmg"_qs, 30'000'000, 5);
        writeFile(u"root/Applications/Loom.app/.kib"_qs, "900");
        writeFile(u"root/Applications/Loom.app/Contents/Info.plist"_qs,
                  "<plist version=\"1.0\"><dict><key>CFBundleIdentifier</key><string>org.example.loom"
                  "</string></dict></plist>");
        addFolder(u"Library/Application Support/Loom"_qs, 40);
    }

    QStringList allIds() const
    {
        return {u"cache:%1/Library/Caches/pip"_qs.arg(home()),
                u"cache:%1/Library/Caches/org.example.loom"_qs.arg(home()),
                u"cache:%1/Library/Caches/odd"_qs.arg(home()),
                u"dup:%1/Downloads/report.pdf"_qs.arg(home()),
                u"sim:4B0E"_qs,
                u"derived-data"_qs,
                u"docker-prune"_qs,
                u"deep:%1/Projects/old/node_modules"_qs.arg(home()),
                u"deep:%1/Downloads/setup.dmg"_qs.arg(home()),
                u"app:org.example.loom"_qs};
    }

    bool has(const QString &below) const { return QFile::exists(home() + u'/' + below); }
};

} // namespace swabby
