#include "Clutter.h"

#include "cleanup/DeepScanner.h"
#include "cleanup/ProjectFolder.h"
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
        compareTable(fixture(u"cleanup/project_search.txt"_qs), reading);
        // Only twenty, and noise does not count.
        const QByteArray one = "noise\\n/r/a/node_modules\\n";
        compareTable("| " + one.repeated(30) + " | " +
                         QByteArray("/r/a/node_modules,").repeated(20).chopped(1),
                     reading);
    }

    void findings()
    {
        for (const char *name : {"old_projects", "installers", "old_downloads"}) {
            const ClutterScene mac(u"cleanup/%1.txt"_qs.arg(QLatin1String(name)));
            QCOMPARE(found(mac, mac.excludes()), mac.expected);
        }
    }

    void whoseDependencies()
    {
        // The files there are, what the first of them begins with, and the folder that holds dependencies.
        compareTable(fixture(u"cleanup/whose_dependencies.txt"_qs), [](const Cells &row) {
            const Clutter mac;
            const QStringList files = row.text(1).split(u';');
            for (const QString &file : files)
                mac.writeFile(u"home/code/"_qs + file, "{}");
            mac.writeFile(u"home/code/"_qs + files[0], row[2]);
            std::filesystem::permissions(mac.homePath("code/" + files[0].toStdString()),
                                         std::filesystem::perms::owner_all);
            return isProject(mac.homePath("code/" + row.string(3)), mac.homePath("code")) ? u"yes"_qs
                                                                                          : u"no"_qs;
        });
    }

    void theTwentyFirstProject()
    {
        const Clutter mac;
        QByteArray script;
        for (int number = 1; number <= 21; ++number) {
            mac.addProject(u"code/p%1"_qs.arg(number), 50'000 + number, 50);
            script += "echo \"$1/p" + QByteArray::number(number) + "/node_modules\"\n";
        }
        mac.addTool(u"/usr/bin/find"_qs, script);
        const QString text = found(mac);
        QCOMPARE(text.count(u'\n'), 19);
        QVERIFY(text.startsWith(u"0|~/code/p20/"_qs) && !text.contains(u"/p21/"_qs));
        QVERIFY(mac.runs().contains(
            u"/usr/bin/find ~/code -maxdepth 5 -type d -name node_modules -prune -print"_qs));
    }

    void removing()
    {
        const ClutterScene mac(u"cleanup/removing.txt"_qs);
        const auto items = DeepScanner::scan({*mac.machine, {}, {}});
        mac.disposal().refused = {mac.homePath("Desktop/a.dmg")};
        std::vector<RemovableItem> all;
        std::transform(items.begin(), items.end(), std::back_inserter(all), RemovableItem::of);
        const auto outcome = removeItems(all, mac.excludes(), *mac.machine, {});
        QCOMPARE(mac.asked(), mac.expected);
        QCOMPARE(outcome.left, std::vector({all[0], all[1]}));
        QCOMPARE(outcome.trashed.at(0).from, mac.homePath("Downloads/b.dmg"));
        removeItems({all[0]}, {}, *mac.machine, {});
        QVERIFY(mac.asked().endsWith(u"\ntrash ~/dev/p/node_modules in ~/dev"_qs));
    }

    void namesThatAreNoText()
    {
        const Clutter mac;
        const std::string name = "caf\xe9";
        mac.addProject(u"dev/odd"_qs, 60'000, 100);
        mac.addProject(u"dev/plain"_qs, 50'000, 100);
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
        mac.addProject(u"dev/p"_qs, 90'000, 100);
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
