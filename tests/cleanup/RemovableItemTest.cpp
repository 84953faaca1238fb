#include "cleanup/Overlaps.h"
#include "support/Table.h"

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

/// "copies 10 /d/a /d/b", and those of them that are parted by "; ".
std::vector<RemovableItem> itemsFrom(const QString &text)
{
    std::vector<RemovableItem> items;
    for (const QString &one : text.split(u"; "_qs, Qt::SkipEmptyParts)) {
        const QStringList words = one.split(u' ', Qt::SkipEmptyParts);
        const std::int64_t size = words.at(1).toLongLong();
        std::vector<std::filesystem::path> paths;
        for (const QString &path : words.mid(2))
            paths.emplace_back(path.toStdString());
        items.push_back(words.front() == u"cache"    ? RemovableItem::of(CacheEntry{paths[0], u"c"_qs, size})
                        : words.front() == u"copies" ? RemovableItem::of(DuplicateGroup{paths, size})
                        : words.front() == u"old"
                            ? RemovableItem::of(DeepScanItem{paths[0], DeepScanCategory::diskImage, {}, size})
                            : RemovableItem::of(DockerPrune{size}));
    }
    return items;
}

} // namespace

class RemovableItemTest : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void texts()
    {
        using Item = RemovableItem;
        const InstalledApp app = {"/Applications/Loom.app", u"Loom"_qs, u"org.example.loom"_qs, 100};
        const SimulatorRuntimeInfo runtime = {u"4B0E"_qs, u"iOS 17.2"_qs, 5, 14},
                                   unused = {u"4B0E"_qs, u"iOS 17.2"_qs, 5, {}};
        const DeepScanItem project = {"/h/p/node_modules", DeepScanCategory::nodeModules,
                                      u"p/node_modules"_qs, 9, 30};
        const DeepScanItem image = {"/h/%1.dmg", DeepScanCategory::diskImage, u"%1.dmg"_qs, 9, 0};
        QStringList lines;
        for (const Item &item :
             {Item::of(CacheEntry{"/h/c/pip", u"Coding tool cache (pip)"_qs, 7}),
              Item::of(DuplicateGroup{{"/h/a/photo.jpg", "/h/b", "/h/c"}, 10'000'000}),
              Item::of(DuplicateGroup{{"/h/a"}, 10}),
              Item::of(DuplicateGroup{{"/h/a", "/h/b", "/h/c"}, most}), Item::of(runtime), Item::of(unused),
              Item::of(project), Item::of(image), Item::of(AppUninstall{app, {}}),
              Item::of(AppUninstall{app, leftovers({20})}), Item::of(AppUninstall{app, leftovers({most, 3})}),
              Item::of(DerivedData{3}), Item::of(DockerPrune{4})})
            lines.append(QStringList{item.id, item.category, item.title, item.subtitle,
                                     QString::number(item.sizeBytes), caseName(item.kind)}
                             .join(u'|'));
        QCOMPARE(lines.join(u'\n'), QString::fromUtf8(fixture(u"cleanup/items.txt"_qs)).trimmed());
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

    // What was found, what of it is removed, what it was together, and what is left.
    void whatIsInAnotherCountsOnceAndGoesWithIt()
    {
        compareTable(fixture(u"cleanup/overlaps.txt"_qs), [](const Cells &row) {
            const auto items = itemsFrom(row.text(0));
            const QString left = row.text(2).section(u':', 1).trimmed();
            return QString::number(bytesTogether(items)) + u':' +
                   (withoutGone(items, itemsFrom(row.text(1))) != itemsFrom(left) ? u" another rest"_qs
                    : left.isEmpty()                                              ? QString()
                                                                                  : u' ' + left);
        });
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
