#include "cleanup/RemovableItem.h"

#include <QtTest/QTest>

#include <limits>

using namespace swabby;

namespace {

constexpr std::int64_t most = std::numeric_limits<std::int64_t>::max();

std::vector<AppLeftover> leftovers(std::initializer_list<std::int64_t> sizes)
{
    std::vector<AppLeftover> result;
    for (const std::int64_t size : sizes)
        result.push_back({"/h/left", u"Support files"_qs, size});
    return result;
}

} // namespace

class RemovableItemTest : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void texts_data()
    {
        QTest::addColumn<RemovableItem>("item");
        QTest::addColumn<QString>("words");
        const auto row = [](const char *name, const RemovableItemKind &found, const QString &words) {
            QTest::newRow(name) << RemovableItem::of(found) << words;
        };
        const InstalledApp app = {"/Applications/Loom.app", u"Loom"_qs, u"org.example.loom"_qs, 100};
        row("cache", CacheEntry{"/h/c/pip", u"Coding tool cache (pip)"_qs, 7},
            u"cache:/h/c/pip|Quick Clean|Coding tool cache (pip)|Regenerates automatically|7|cache"_qs);
        row("three copies", DuplicateGroup{{"/h/a/photo.jpg", "/h/b", "/h/c"}, 10'000'000},
            u"dup:/h/a/photo.jpg|Duplicate Finder|photo.jpg ×3|Keeps one copy, moves the rest to Trash|20000000|duplicateGroup"_qs);
        row("one copy", DuplicateGroup{{"/h/a"}, 10},
            u"dup:/h/a|Duplicate Finder|a ×1|Keeps one copy, moves the rest to Trash|0|duplicateGroup"_qs);
        row("sizes beyond any disk", DuplicateGroup{{"/h/a", "/h/b", "/h/c"}, most},
            u"dup:/h/a|Duplicate Finder|a ×3|Keeps one copy, moves the rest to Trash|9223372036854775807|duplicateGroup"_qs);
        row("unused runtime", SimulatorRuntimeInfo{u"4B0E"_qs, u"iOS 17.2"_qs, 5, 14},
            u"sim:4B0E|Developer Cleanup|iOS 17.2|Last used 14 days ago|5|simulatorRuntime"_qs);
        row("runtime never used", SimulatorRuntimeInfo{u"4B0E"_qs, u"iOS 17.2"_qs, 5, std::nullopt},
            u"sim:4B0E|Developer Cleanup|iOS 17.2|Never used|5|simulatorRuntime"_qs);
        row("project",
            DeepScanItem{"/h/p/node_modules", DeepScanCategory::nodeModules, u"p/node_modules"_qs, 9, 30},
            u"deep:/h/p/node_modules|Deep Scan|p/node_modules|Old project (node_modules) · untouched for 30 days · moved to Trash|9|deepScanItem"_qs);
        row("a name with place holders",
            DeepScanItem{"/h/%1.dmg", DeepScanCategory::diskImage, u"%1.dmg"_qs, 9, 0},
            u"deep:/h/%1.dmg|Deep Scan|%1.dmg|Old installer file · untouched for 0 days · moved to Trash|9|deepScanItem"_qs);
        row("no leftovers", AppUninstall{app, {}},
            u"app:org.example.loom|App Uninstaller|Loom|Moves the app to Trash|100|appUninstall"_qs);
        row("one leftover", AppUninstall{app, leftovers({20})},
            u"app:org.example.loom|App Uninstaller|Loom|Moves the app and 1 related file to Trash|120|appUninstall"_qs);
        row("leftovers beyond any disk", AppUninstall{app, leftovers({most, 3})},
            u"app:org.example.loom|App Uninstaller|Loom|Moves the app and 2 related files to Trash|9223372036854775807|appUninstall"_qs);
        row("build cache", DerivedData{3},
            u"derived-data|Developer Cleanup|Xcode build cache|Rebuilds automatically next time you build|3|derivedData"_qs);
        row("containers", DockerPrune{4},
            u"docker-prune|Developer Cleanup|Docker cleanup|Unused images, stopped containers, build cache|4|dockerPrune"_qs);
    }

    void texts()
    {
        QFETCH(RemovableItem, item);
        const QString words = QStringList{item.id,
                                          item.category,
                                          item.title,
                                          item.subtitle,
                                          QString::number(item.sizeBytes),
                                          caseName(item.kind)}
                                  .join(u'|');
        QTEST(words, "words");
    }

    void keys()
    {
        // A group that lost its files is nobody else's.
        const RemovableItem lost = RemovableItem::of(DuplicateGroup{{}, 10});
        QVERIFY(lost.id != RemovableItem::of(DuplicateGroup{{}, 10}).id && lost.id.size() > 30);
        QCOMPARE(lost.title, u" ×0"_qs);
        QCOMPARE(lost.sizeBytes, -10);
        // Names that are no text look alike and are told apart.
        const auto keyOf = [](const char *path) {
            return RemovableItem::of(CacheEntry{path, u"?"_qs, 1}).id;
        };
        QVERIFY(keyOf("/h/a b\xff") != keyOf("/h/a b\xfe"));
        QCOMPARE(keyOf("/h/a b\xff"), u"cache:/h/a b%FF"_qs);
    }

    void whatWasFoundIsNoPartOfWhatIsSaid()
    {
        CacheEntry entry = {"/h/c", u"c"_qs, 1};
        const RemovableItem item = RemovableItem::of(entry);
        entry.identity.inode = 5;
        QCOMPARE(RemovableItem::of(entry), item);
        entry.sizeBytes = 2;
        QVERIFY(RemovableItem::of(entry) != item);
    }
};

QTEST_GUILESS_MAIN(RemovableItemTest)
#include "RemovableItemTest.moc"
