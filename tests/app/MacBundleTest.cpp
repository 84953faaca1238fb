#include "app/IconPacking.h"
#include "app/TitleImage.h"
#include "platform/mactools/IconFile.h"
#include "platform/mactools/PropertyList.h"

#include <QtCore/QBuffer>
#include <QtCore/QFile>
#include <QtTest/QTest>

using namespace swabby;

namespace {

PlistNode listIn(const char *name)
{
    QFile file(QStringLiteral(SWABBY_PACKAGING "/mac/") + QLatin1String(name));
    return file.open(QIODevice::ReadOnly) ? plistDictionary(file.readAll()) : nullptr;
}

/// Its text, or "true" or "false"; empty for anything else.
QString valueOf(const PlistNode &list, const char *key)
{
    const plist_t node = plist_dict_get_item(list.get(), key);
    if (node == nullptr || plist_get_node_type(node) != PLIST_BOOLEAN)
        return plistText(node).value_or(QString());
    std::uint8_t isTrue = 0;
    plist_get_bool_val(node, &isTrue);
    return isTrue != 0 ? QStringLiteral("true") : QStringLiteral("false");
}

} // namespace

class MacBundleTest : public QObject {
    Q_OBJECT

private Q_SLOTS:
    // What a Mac refuses to start, starts otherwise or never asks the person for without these.
    void propertyLists()
    {
        struct Entry {
            const char *file, *key, *value;
        };
        for (const Entry &entry :
             {Entry{"Info.plist.in", "CFBundleIdentifier", "com.swabby.app"},
              {"Info.plist.in", "CFBundleExecutable", "swabby"},
              {"Info.plist.in", "CFBundlePackageType", "APPL"},
              {"Info.plist.in", "CFBundleIconFile", "Swabby"},
              {"Info.plist.in", "LSUIElement", "true"},
              {"Info.plist.in", "NSAppSleepDisabled", "true"},
              {"Info.plist.in", "NSSupportsSuddenTermination", "false"},
              {"Swabby.entitlements", "com.apple.security.automation.apple-events", "true"}})
            QCOMPARE(valueOf(listIn(entry.file), entry.key), QLatin1String(entry.value));
        for (const char *asked : {"AppleEvents", "DesktopFolder", "DocumentsFolder", "DownloadsFolder"})
            QVERIFY2(!valueOf(listIn("Info.plist.in"),
                              qPrintable(QStringLiteral("NS%1UsageDescription").arg(QLatin1String(asked))))
                          .isEmpty(),
                     asked);
    }

    void icon()
    {
        std::map<int, QByteArray> pictures;
        for (const int side : iconSides) {
            QBuffer png(&pictures[side]);
            QVERIFY(applicationPicture(side).save(&png, "PNG"));
        }
        pictures[48] = pictures[32];
        const QByteArray file = packIcon(pictures);
        for (const int side : iconSides)
            QCOMPARE(QImage::fromData(pngOfIconFile(file, side)).size(), QSize(side, side));
        QCOMPARE(pngOfIconFile(file, 48), pictures[64]);
        QCOMPARE(pngOfIconFile(file, 4'000), pictures[1024]);
    }
};

QTEST_GUILESS_MAIN(MacBundleTest)
#include "MacBundleTest.moc"
