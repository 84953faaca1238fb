#include "Clutter.h"

#include "cleanup/DeepScanner.h"
#include "cleanup/RemovalRun.h"
#include "support/Table.h"

#include <QtTest/QTest>

using namespace swabby;

namespace {

/// The findings one a line: category, path, name, size and age.
QString found(const Clutter &mac, const ExcludeList &excludes = {})
{
    return lines(DeepScanner::scan({*mac.machine, {}, excludes}), [&](const DeepScanItem &item) {
        const QString path = mac.shortened(QString::fromStdString(item.path));
        return QString(u"%1|%2|%3|%4|%5"_qs)
            .arg(QString::number(static_cast<int>(item.category)), path, item.description)
            .arg(item.sizeBytes)
            .arg(item.daysOld);
    });
}

/// A project of that age whose dependency folder is so large.
void addProject(const Clutter &mac, const QString &path, std::int64_t kib, std::int64_t secondsOld)
{
    mac.addFolder(path + u"/node_modules"_qs, kib);
    mac.age(path, secondsOld);
}

} // namespace

class DeepScannerTest : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void searchText()
    {
        const auto reading = [](const Cells &row) {
            QStringList words;
            for (const auto &path : DeepScanner::parseProjectSearch(row.string(1), "/r"))
                words.append(QString::fromStdString(path));
            return words.join(u',');
        };
        compareTable(R"(
            nothing | |
            usual | /r/a/node_modules\n\n/r/b c/node_modules | /r/a/node_modules,/r/b c/node_modules
            the root's own | /r/node_modules\n | /r/node_modules
            elsewhere | /s/a/node_modules\n/ra/node_modules\n/r/../s/node_modules\n/r/./a/node_modules\na/node_modules\n//r/a/node_modules\n |
            something else | /r/a/node_modules/\n/r/a/node_modules2\n/r/mynode_modules\nfind: '/r/x': refused\n |)",
                     reading);
        // Only twenty, and noise does not count.
        const QByteArray one = "noise\\n/r/a/node_modules\\n";
        compareTable("| " + one.repeated(30) + " | " +
                         QByteArray("/r/a/node_modules,").repeated(20).chopped(1),
                     reading);
    }

    void oldProjects()
    {
        const Clutter mac;
        addProject(mac, u"Documents/Loom"_qs, 48'829, 30 * Clutter::day);
        addProject(mac, u"Documents/young"_qs, 90'000, 30 * Clutter::day - 1);
        addProject(mac, u"Documents/small"_qs, 48'828, 90 * Clutter::day);
        addProject(mac, u"Documents/1/2/3/4"_qs, 60'000, 40 * Clutter::day);
        addProject(mac, u"Documents/1/2/3/4/5"_qs, 90'000, 40 * Clutter::day); // too deep
        mac.age(u"Documents/1/2/3/4"_qs, 40 * Clutter::day);
        mac.addFolder(u"Documents/1/2/3/4/node_modules/x/node_modules"_qs, 90'000);
        for (const char *root : {"Sites", "Desktop", "Developer", "Projects", "GitHub", "dev", "code"})
            addProject(mac, QString::fromLatin1(root) + u"/p"_qs, 50'000, 100 * Clutter::day);
        addProject(mac, u"Music/p"_qs, 90'000, 100 * Clutter::day); // nobody keeps projects there
        // Of equal sizes the earlier root's comes first.
        QCOMPARE(found(mac), u"0|~/Documents/1/2/3/4/node_modules|4/node_modules|61440000|40\n"
                             "0|~/Desktop/p/node_modules|p/node_modules|51200000|100\n"
                             "0|~/Developer/p/node_modules|p/node_modules|51200000|100\n"
                             "0|~/Projects/p/node_modules|p/node_modules|51200000|100\n"
                             "0|~/GitHub/p/node_modules|p/node_modules|51200000|100\n"
                             "0|~/dev/p/node_modules|p/node_modules|51200000|100\n"
                             "0|~/code/p/node_modules|p/node_modules|51200000|100\n"
                             "0|~/Sites/p/node_modules|p/node_modules|51200000|100\n"
                             "0|~/Documents/Loom/node_modules|Loom/node_modules|50000896|30"_qs);
        QVERIFY(mac.runs().contains(
            u"/usr/bin/find ~/Documents -maxdepth 5 -type d -name node_modules -prune -print"_qs));
        QVERIFY(!found(mac, mac.excluding({"Documents/1"})).contains(u"Documents/1/"_qs));
    }

    void theTwentyFirstProject()
    {
        const Clutter mac;
        QByteArray script;
        for (int number = 1; number <= 21; ++number) {
            addProject(mac, u"code/p%1"_qs.arg(number), 50'000 + number, 50 * Clutter::day);
            script += "echo \"$1/p" + QByteArray::number(number) + "/node_modules\"\n";
        }
        mac.addTool(u"/usr/bin/find"_qs, script);
        const QString text = found(mac);
        QCOMPARE(text.count(u'\n'), 19);
        QVERIFY(text.startsWith(u"0|~/code/p20/"_qs) && !text.contains(u"/p21/"_qs));
    }

    void installers()
    {
        const Clutter mac;
        mac.addFile(u"Desktop/Setup.DMG"_qs, 25'000'000);
        mac.addFile(u"Desktop/just.iso"_qs, 20'000'001, 1);
        mac.addFile(u"Desktop/not.iso"_qs, 20'000'000, 1);
        mac.addFile(u"Downloads/.hidden.pkg"_qs, 21'000'000);
        mac.addFile(u"Downloads/.dmg"_qs, 40'000'000); // a hidden file of that name, no extension
        mac.addFile(u"Downloads/film.mov"_qs, 40'000'000);
        mac.addFile(u"Documents/far.dmg"_qs, 40'000'000);
        mac.addFolder(u"Downloads/bundle.pkg"_qs, 90'000); // a folder's own length is short
        mac.addFile(u"Downloads/ahead.pkg"_qs, 22'000'000, -3);
        QCOMPARE(found(mac), u"1|~/Desktop/Setup.DMG|Setup.DMG|25000000|0\n"
                             "1|~/Downloads/ahead.pkg|ahead.pkg|22000000|-3\n"
                             "1|~/Downloads/.hidden.pkg|.hidden.pkg|21000000|0\n"
                             "1|~/Desktop/just.iso|just.iso|20000001|1"_qs);
    }

    void oldDownloads()
    {
        const Clutter mac;
        mac.addFolder(u"Downloads/Photos"_qs, 60'000, 100);
        mac.addFolder(u"Downloads/small"_qs, 48'828, 100);
        mac.addFile(u"Downloads/just.mov"_qs, 50'000'001, 90);
        mac.addFile(u"Downloads/not.mov"_qs, 50'000'000, 90);
        mac.addFile(u"Downloads/young.mov"_qs, 60'000'000);
        mac.age(u"Downloads/young.mov"_qs, 90 * Clutter::day - 1);
        mac.addFile(u"Downloads/old.dmg"_qs, 30'000'000, 200);
        mac.addFile(u"Downloads/large.dmg"_qs, 80'000'000, 200);
        mac.addFile(u"Desktop/old.mov"_qs, 90'000'000, 200);
        const QString large = u"|~/Downloads/large.dmg|large.dmg|80000000|200\n"_qs;
        QCOMPARE(found(mac), u"1"_qs + large + u"2"_qs + large +
                                 u"2|~/Downloads/Photos|Photos|61440000|100\n"
                                 "2|~/Downloads/just.mov|just.mov|50000001|90\n"
                                 "1|~/Downloads/old.dmg|old.dmg|30000000|200"_qs);
        QVERIFY(!found(mac, mac.excluding({"Downloads/Photos/mine"})).contains(u"Photos"_qs));
    }

    void removing()
    {
        const Clutter mac;
        addProject(mac, u"dev/p"_qs, 90'000, 100 * Clutter::day);
        mac.addFile(u"Desktop/a.dmg"_qs, 80'000'000);
        mac.addFile(u"Downloads/b.dmg"_qs, 70'000'000, 100);
        const auto items = DeepScanner::scan({*mac.machine, {}, {}});
        mac.disposal().refused = {mac.homePath("Desktop/a.dmg")};
        std::vector<RemovableItem> all;
        std::transform(items.begin(), items.end(), std::back_inserter(all), RemovableItem::of);
        const auto outcome = removeItems(all, mac.excluding({"dev/p/node_modules/x"}), *mac.machine, {});
        QCOMPARE(mac.asked(), u"trash ~/Desktop/a.dmg in ~/Desktop\n"
                              "trash ~/Downloads/b.dmg in ~/Downloads\n"
                              "trash ~/Downloads/b.dmg in ~/Downloads"_qs);
        QCOMPARE(outcome.left, std::vector({all[0], all[1]}));
        QCOMPARE(outcome.trashed.at(0).from, mac.homePath("Downloads/b.dmg"));
        removeItems({all[0]}, {}, *mac.machine, {});
        QVERIFY(mac.asked().endsWith(u"\ntrash ~/dev/p/node_modules in ~/dev"_qs));
    }

    void namesThatAreNoText()
    {
        const Clutter mac;
        const std::string name = "caf\xe9";
        addProject(mac, u"dev/odd"_qs, 60'000, 100 * Clutter::day);
        addProject(mac, u"dev/plain"_qs, 50'000, 100 * Clutter::day);
        std::filesystem::rename(mac.homePath("dev/odd"), mac.homePath("dev/" + name));
        mac.addFile(u"Downloads/plain.iso"_qs, 30'000'000);
        std::filesystem::rename(mac.homePath("Downloads/plain.iso"),
                                mac.homePath("Downloads/" + name + ".iso"));
        const auto items = DeepScanner::scan({*mac.machine, {}, {}});
        QCOMPARE(items.size(), 3U);
        QCOMPARE(items[0].path, mac.homePath("dev/" + name + "/node_modules"));
        QCOMPARE(items[0].sizeBytes, 61'440'000);
        QCOMPARE(items[2].path, mac.homePath("Downloads/" + name + ".iso"));
        QVERIFY(removeItems({RemovableItem::of(items[2])}, {}, *mac.machine, {}).left.empty());
        std::filesystem::remove_all(mac.homePath()); // the temporary folder cannot name them
    }

    void toolsThatDoNotAnswer()
    {
        const Clutter mac;
        addProject(mac, u"dev/p"_qs, 90'000, 100 * Clutter::day);
        mac.addFile(u"Desktop/a.dmg"_qs, 80'000'000);
        const QString rest = u"1|~/Desktop/a.dmg|a.dmg|80000000|0"_qs;
        for (const char *script :
             {"exit 1", "echo garbage", "printf '\\377/node_modules\\377'", "echo \"$1/p/node_modules\" >&2",
              "yes \"$1/gone/node_modules\" | head -n 100000"}) {
            mac.addTool(u"/usr/bin/find"_qs, script);
            QCOMPARE(found(mac), rest);
        }
        QVERIFY(QFile::remove(mac.folder() + u"/root/usr/bin/find"_qs));
        QCOMPARE(found(mac), rest);
        QVERIFY(QDir(mac.home() + u"/Desktop"_qs).removeRecursively());
        mac.writeFile(u"home/Downloads"_qs, "a file in place of the folder");
        QCOMPARE(found(mac), QString());
    }
};

QTEST_GUILESS_MAIN(DeepScannerTest)
#include "DeepScannerTest.moc"
