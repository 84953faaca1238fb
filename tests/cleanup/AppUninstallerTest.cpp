#include "Clutter.h"

#include "cleanup/AppUninstaller.h"
#include "cleanup/RemovalRun.h"
#include "support/Table.h"

#include <QtTest/QTest>

using namespace swabby;

namespace {

QString listed(const Clutter &mac, const ExcludeList &excludes = {})
{
    return lines(
        AppUninstaller::scanInstalledApps({*mac.machine, {}, excludes}), [&](const InstalledApp &app) {
            const QString path = mac.shortened(QString::fromStdString(app.path)).remove(mac.folder());
            return QString(u"%1|%2|%3|%4"_qs).arg(path, app.name, app.bundleID).arg(app.sizeBytes);
        });
}

QString leftoversOf(const Clutter &mac, const InstalledApp &app, const ExcludeList &excludes = {})
{
    return lines(AppUninstaller::scanLeftovers({*mac.machine, {}, excludes}, app),
                 [&](const AppLeftover &leftover) {
                     const QString path = mac.shortened(QString::fromStdString(leftover.path));
                     return QString(u"%1|%2|%3"_qs).arg(path, leftover.description).arg(leftover.sizeBytes);
                 });
}

} // namespace

class AppUninstallerTest : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void applications()
    {
        const ClutterScene mac(u"cleanup/applications.txt"_qs);
        QCOMPARE(listed(mac, mac.excludes()), mac.expected);
        const ClutterScene renamed(u"cleanup/our_own_name.txt"_qs,
                                   {{u"bundleID"_qs, u"org.example.loom"_qs}});
        QCOMPARE(listed(renamed), renamed.expected);
    }

    void leftovers()
    {
        const InstalledApp app = {"/Applications/Loom.app", u"Loom"_qs, u"org.example.loom"_qs, 5};
        for (const QString &name : {u"cleanup/leftovers.txt"_qs, u"cleanup/fewer_leftovers.txt"_qs}) {
            const ClutterScene mac(name);
            QCOMPARE(leftoversOf(mac, app, mac.excludes()), mac.expected);
        }
    }

    void namesThatReachTooFar()
    {
        const Clutter mac;
        for (const char *folder : {"Library", "Library/Caches", "Library/Logs", "Library/Application Support",
                                   "Library/Containers", "Library/Logs/Loom", "Library/Logs/a/b"})
            mac.addFolder(QString::fromLatin1(folder), 4);
        for (const QString &name : {u""_qs, u"."_qs, u".."_qs, u"../Caches"_qs, u"a/b"_qs, u"/"_qs,
                                    QString(u"Lo\uFFFDom"_qs), QString::fromUtf8("Loom\0x", 6)}) {
            QCOMPARE(leftoversOf(mac, {"/Applications/x.app", name, name, 5}), QString());
            QVERIFY(mac.machine->applications->leftoverPlaces({{}, name, name, {}}).empty());
        }
    }

    void running()
    {
        const QJsonArray running = {
            QJsonObject{{u"pid"_qs, 7}, {u"bundleID"_qs, u"org.example.loom"_qs}, {u"terminates"_qs, true}},
            QJsonObject{{u"pid"_qs, 8}, {u"bundleID"_qs, u"org.example.weft"_qs}, {u"terminates"_qs, false}},
            QJsonObject{{u"pid"_qs, 9}, {u"terminates"_qs, u"yes"_qs}},
            QJsonObject{{u"bundleID"_qs, u"org.example.none"_qs}}, u"nonsense"_qs};
        const Clutter mac({{u"runningApplications"_qs, running}});
        const auto runs = [&](const QString &id) { return AppUninstaller::isRunning(*mac.machine, id); };
        QVERIFY(runs(u"org.example.loom"_qs) && runs(u"org.example.weft"_qs));
        QVERIFY(!runs(u"org.example"_qs) && !runs(u"ORG.example.loom"_qs) && !runs(u"org.example.none"_qs));
        QVERIFY(!runs(u""_qs)); // the one without an identifier is not everybody's
        RunningApplications &applications = *mac.machine->runningApplications;
        QCOMPARE(applications.list().size(), 3U);
        QVERIFY(!applications.terminate({8}) && !applications.terminate({1}) &&
                !applications.terminate({-7}));
        QVERIFY(applications.terminate({7}));
        QVERIFY(!applications.terminate({7}) && !runs(u"org.example.loom"_qs)); // gone by now
        QCOMPARE(mac.events(u"terminate"_qs), QJsonArray{7});
    }

    void uninstalling()
    {
        const ClutterScene mac(u"cleanup/uninstalling.txt"_qs);
        const InstalledApp app = AppUninstaller::scanInstalledApps({*mac.machine, {}, {}}).at(0);
        const auto leftovers = AppUninstaller::scanLeftovers({*mac.machine, {}, {}}, app);
        mac.disposal().refused = {app.path};
        const auto outcome =
            removeItems({RemovableItem::of(AppUninstall{app, leftovers})}, mac.excludes(), *mac.machine, {});
        // The leftovers go although the application stayed.
        QCOMPARE(mac.asked(), mac.expected);
        QCOMPARE(outcome.trashed.size(), 1U);
        QCOMPARE(outcome.left.size(), 1U);
        // One that was started meanwhile keeps everything.
        const ClutterScene busy(u"cleanup/uninstalling.txt"_qs,
                                {{u"runningApplications"_qs,
                                  QJsonArray{QJsonObject{{u"pid"_qs, 7}, {u"bundleID"_qs, app.bundleID}}}}});
        const auto refused =
            removeItems({RemovableItem::of(AppUninstall{app, leftovers})}, {}, *busy.machine, {});
        QCOMPARE(refused.left.size(), 1U);
        QCOMPARE(busy.asked(), QString());
    }
};

QTEST_GUILESS_MAIN(AppUninstallerTest)
#include "AppUninstallerTest.moc"
