#include "Clutter.h"

#include "cleanup/AppUninstaller.h"
#include "cleanup/RemovalRun.h"
#include "support/Table.h"

#include <QtTest/QTest>

using namespace swabby;

namespace {

QByteArray plist(const QMap<QByteArray, QByteArray> &texts)
{
    QByteArray list = "<plist version=\"1.0\"><dict>";
    for (const QByteArray &key : texts.keys())
        list += "<key>" + key + "</key>" +
                (texts[key].startsWith('<') ? texts[key] : "<string>" + texts[key] + "</string>");
    return list + "</dict></plist>";
}

/// A bundle at this place of the machine folder that du finds so large.
void addBundle(const Clutter &mac, const QString &bundle, std::int64_t kib,
               const QMap<QByteArray, QByteArray> &texts)
{
    mac.writeFile(bundle + u"/.kib"_qs, QByteArray::number(qlonglong(kib)));
    mac.writeFile(bundle + u"/Contents/Info.plist"_qs, plist(texts));
}

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

const QMap<QByteArray, QByteArray> loom = {{"CFBundleIdentifier", "org.example.loom"}};

} // namespace

class AppUninstallerTest : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void applications()
    {
        const Clutter mac;
        const QString system = u"root/Applications/"_qs;
        addBundle(mac, system + u"Loom.app"_qs, 30, loom);
        addBundle(
            mac, system + u"Both.app"_qs, 20,
            {{"CFBundleIdentifier", "b"}, {"CFBundleName", "short"}, {"CFBundleDisplayName", "For people"}});
        addBundle(mac, system + u"Short.app"_qs, 19,
                  {{"CFBundleIdentifier", "s"}, {"CFBundleName", "short"}});
        addBundle(mac, system + u"Odd.app"_qs, 18,
                  {{"CFBundleIdentifier", "o"},
                   {"CFBundleName", "short"},
                   {"CFBundleDisplayName", "<integer>5</integer>"}});
        addBundle(mac, u"home/Applications/Own.app"_qs, 18, {{"CFBundleIdentifier", "w"}});
        // What is not listed.
        addBundle(mac, system + u"No identifier.app"_qs, 50, {{"CFBundleName", "n"}});
        addBundle(mac, system + u"No text.app"_qs, 50, {{"CFBundleIdentifier", "<true/>"}});
        addBundle(mac, system + u"Empty.app"_qs, 50, {{"CFBundleIdentifier", ""}});
        addBundle(mac, system + u"Nothing in it.app"_qs, 0, {{"CFBundleIdentifier", "z"}});
        addBundle(mac, system + u"Us.app"_qs, 50, {{"CFBundleIdentifier", "com.swabby.app"}});
        addBundle(mac, system + u"Loom.APP"_qs, 50, loom);
        addBundle(mac, system + u"Folder/Deep.app"_qs, 50, loom);
        mac.writeFile(system + u"Broken.app/Contents/Info.plist"_qs, "<plist><dict><key>CFBundle");
        mac.writeFile(system + u"Hollow.app/Contents/MacOS/x"_qs, "x");
        mac.writeFile(system + u"File.app"_qs, "30");
        QCOMPARE(listed(mac), u"/root/Applications/Loom.app|Loom|org.example.loom|30720\n"
                              "/root/Applications/Both.app|For people|b|20480\n"
                              "/root/Applications/Short.app|short|s|19456\n"
                              "/root/Applications/Odd.app|short|o|18432\n"
                              "~/Applications/Own.app|Own|w|18432"_qs);
        QVERIFY(!listed(mac, mac.excluding({"Applications/Own.app/Contents"})).contains(u"Own"_qs));
    }

    void ourOwnName()
    {
        const Clutter mac({{u"bundleID"_qs, u"org.example.loom"_qs}});
        addBundle(mac, u"root/Applications/Loom.app"_qs, 30, loom);
        addBundle(mac, u"root/Applications/Swabby.app"_qs, 30, {{"CFBundleIdentifier", "com.swabby.app"}});
        QCOMPARE(listed(mac), u"/root/Applications/Swabby.app|Swabby|com.swabby.app|30720"_qs);
    }

    void leftovers()
    {
        const Clutter mac;
        const InstalledApp app = {"/Applications/Loom.app", u"Loom"_qs, u"org.example.loom"_qs, 5};
        for (const char *folder :
             {"Containers/org.example.loom", "WebKit/org.example.loom", "HTTPStorages/org.example.loom",
              "Logs/Loom", "Saved Application State/org.example.loom.savedState", "Application Support/Loom",
              "Caches/org.example.loom", "Caches/Loom", "Application Support/org.example.loom",
              "Application Support/Loom 2", "Containers/org.example.loom.helper"})
            mac.addFolder(u"Library/"_qs + QString::fromLatin1(folder), 4);
        mac.writeFile(u"home/Library/Preferences/org.example.loom.plist"_qs, "8\n");
        QCOMPARE(leftoversOf(mac, app),
                 u"~/Library/Caches/org.example.loom|Cached data|4096\n"
                 "~/Library/Application Support/Loom|Support files|4096\n"
                 "~/Library/Preferences/org.example.loom.plist|Preferences|8192\n"
                 "~/Library/Saved Application State/org.example.loom.savedState|Saved window state|4096\n"
                 "~/Library/Logs/Loom|Log files|4096\n"
                 "~/Library/HTTPStorages/org.example.loom|Website data|4096\n"
                 "~/Library/WebKit/org.example.loom|Web view cache|4096\n"
                 "~/Library/Containers/org.example.loom|Sandboxed app data|4096"_qs);
        mac.writeFile(u"home/Library/Preferences/org.example.loom.plist"_qs, "0\n");
        const QString less = leftoversOf(mac, app, mac.excluding({"Library/Logs/Loom/keep.log"}));
        QVERIFY(!less.contains(u"Preferences"_qs) && !less.contains(u"Logs"_qs));
        QCOMPARE(less.count(u'\n'), 5);
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
            QVERIFY(mac.machine->applications->leftoverPlaces(name, name).empty());
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
        QVERIFY(!applications.terminate(8) && !applications.terminate(1) && !applications.terminate(-7));
        QVERIFY(applications.terminate(7));
        QVERIFY(!applications.terminate(7) && !runs(u"org.example.loom"_qs)); // gone by now
        QCOMPARE(mac.events(u"terminate"_qs), QJsonArray{7});
    }

    void uninstalling()
    {
        const Clutter mac;
        addBundle(mac, u"home/Applications/Loom.app"_qs, 30, loom);
        mac.addFolder(u"Library/Logs/Loom"_qs, 4);
        mac.addFolder(u"Library/Caches/org.example.loom"_qs, 4);
        const InstalledApp app = AppUninstaller::scanInstalledApps({*mac.machine, {}, {}}).at(0);
        const auto leftovers = AppUninstaller::scanLeftovers({*mac.machine, {}, {}}, app);
        mac.disposal().refused = {app.path};
        const auto outcome = removeItems({RemovableItem::of(AppUninstall{app, leftovers})},
                                         mac.excluding({"Library/Logs"}), *mac.machine, {});
        // The leftovers go although the application stayed.
        QCOMPARE(mac.asked(), u"trash ~/Applications/Loom.app in ~/Applications\n"
                              "trash ~/Library/Caches/org.example.loom in ~/Library/Caches"_qs);
        QCOMPARE(outcome.trashed.size(), 1U);
        QCOMPARE(outcome.left.size(), 1U);
    }
};

QTEST_GUILESS_MAIN(AppUninstallerTest)
#include "AppUninstallerTest.moc"
