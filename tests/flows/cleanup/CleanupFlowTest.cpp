#include "flows/cleanup/CleanupFlow.h"
#include "ai/CloudAI.h"
#include "cleanup/FullMac.h"
#include "cleanup/PutBackRecord.h"
#include "cleanup/RemovalRun.h"
#include "cleanup/Search.h"
#include "flows/cleanup/StorageScans.h"
#include "settings/Settings.h"
#include "support/Table.h"

#include <QtCore/QDir>
#include <QtCore/QJsonDocument>
#include <QtCore/QTimer>
#include <QtTest/QSignalSpy>
#include <QtTest/QTest>

using namespace swabby;

namespace {

/// Everything a removal needs, on a Mac whose disposal is real.
struct Scene {
    explicit Scene(const QJsonObject &facts = {},
                   std::chrono::milliseconds bannerTime = std::chrono::hours(1))
        : mac(facts), state(mac.open(), Record::nothing), flow(state, bannerTime)
    {
    }

    std::vector<RemovableItem> items(const QStringList &ids) const
    {
        std::vector<RemovableItem> found;
        for (const RemovableItem &item : findEverything(Search::on(state.machine(), {})))
            if (ids.contains(item.id))
                found.push_back(item);
        return found;
    }
    /// Removes them and gives what the run reports.
    CleanupReport remove(const std::vector<RemovableItem> &items)
    {
        CleanupReport result;
        const auto listening = QObject::connect(&flow, &CleanupFlow::removed, &flow,
                                                [&](const auto &report) { result = report; });
        flow.remove(items);
        waitUntil([&] { return !result.id.isNull(); });
        QObject::disconnect(listening);
        return result;
    }
    qint64 weeklyBytesFreed() const
    {
        return Settings(*state.machine().settings).value(setting<"weeklyBytesFreed">);
    }

    FullMac mac;
    AppState state;
    CleanupFlow flow;
};

/// Docker prunes until something opens DIR/gate; it says that it has begun by DIR/held.
void holdDocker(const FullMac &mac)
{
    mac.addTool(u"/usr/local/bin/docker"_qs, R"(printf 'Images\t1.2GB (50%%)\n'
[ "$2" = df ] || { : >"$MACHINE_DIR/held"; read -r line <"$MACHINE_DIR/gate"; })");
    if (::mkfifo(qPrintable(mac.folder() + u"/gate"_qs), 0600) != 0)
        qFatal("no gate");
}

} // namespace

class CleanupFlowTest : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void theBanner()
    {
        // What is left has one letter each.
        compareTable(fixture(u"flows/banners.txt"_qs), [](const Cells &row) {
            CleanupReport report = {{}, qint64(row.number(0)), qint64(row.number(1)), {}};
            for (const QChar title : row.text(2))
                report.left.push_back({.id = {}, .category = {}, .title = title, .subtitle = {}, .kind = {}});
            return (bannerText(report) + u"; "_qs + leftText(report)).trimmed();
        });
    }

    void aRunIsCountedAsItWasAgreedTo()
    {
        Scene scene;
        scene.flow.remove({});
        QVERIFY(!scene.state.isRemoving());
        const RemovableItem build = RemovableItem::of(DerivedData{700});
        const RemovableItem docker = RemovableItem::of(DockerPrune{300});
        scene.flow.remove({build, docker, build, docker});
        QVERIFY(scene.state.isRemoving());
        QVERIFY(!scene.state.lastCleanup());
        QVERIFY(waitUntil([&] { return !scene.state.isRemoving(); }));
        const CleanupReport report = *scene.state.lastCleanup();
        QCOMPARE(report.itemCount, 4);
        QCOMPARE(report.freedBytes, 2'000);
        QVERIFY(report.left.empty());
        QCOMPARE(scene.weeklyBytesFreed(), 2'000);
        QCOMPARE(scene.mac.runs(), u"/usr/local/bin/docker system prune -af"_qs);
        QCOMPARE(scene.mac.events(u"delete"_qs).size(), 1);
        QVERIFY(scene.mac.has(u"Library/Developer/Xcode/DerivedData"_qs));

        QFile::remove(scene.mac.folder() + u"/root/usr/local/bin/docker"_qs);
        QCOMPARE(scene.remove({docker, docker}).left.size(), 2U);
        QCOMPARE(scene.weeklyBytesFreed(), 2'600);
        QCOMPARE(scene.remove({RemovableItem::of(DerivedData{0})}).freedBytes, 0);
        QCOMPARE(scene.weeklyBytesFreed(), 2'600);
        QVERIFY(!scene.flow.canPutBack());
    }

    void theEnginesFollowEachOther()
    {
        Scene scene;
        auto all = scene.items(scene.mac.allIds());
        QCOMPARE(all.size(), std::size_t(scene.mac.allIds().size()));
        std::reverse(all.begin(), all.end());
        const qsizetype scans = scene.mac.events(u"run"_qs).size();
        const CleanupReport report = scene.remove(all);
        QVERIFY(report.left.empty());
        QCOMPARE(report.canBePutBack, 5);

        QFile log(scene.mac.folder() + u"/events.jsonl"_qs);
        QVERIFY(log.open(QIODevice::ReadOnly));
        QStringList events;
        qsizetype runs = 0;
        for (const QByteArray &line : log.readAll().trimmed().split('\n')) {
            const QJsonValue what = QJsonDocument::fromJson(line).object().begin().value();
            if (what.isArray() && ++runs <= scans)
                continue;
            const QString words = what.isArray()    ? what.toVariant().toStringList().join(u' ')
                                  : what.isObject() ? what[u"from"_qs].toString()
                                                    : what.toString();
            events.append(scene.mac.shortened(words).remove(scene.mac.folder()).section(u'/', -2));
        }
        QCOMPARE(events.join(u", "_qs),
                 u"Caches/odd, Caches/org.example.loom, Caches/pip, bin/env brew cleanup -q, "
                 "bin/env pip cache purge, Desktop/report again.pdf, bin/xcrun simctl runtime delete 4B0E, "
                 "DerivedData/.kib, bin/docker system prune -af, Downloads/setup.dmg, old/node_modules, "
                 "Applications/Loom.app, Application Support/Loom"_qs);
    }

    void twoRunsBannersDoNotMeet()
    {
        Scene scene({}, std::chrono::milliseconds(1));
        const RemovableItem nothing = RemovableItem::of(DerivedData{1});
        const CleanupReport newer = {.id = QUuid::createUuid(), .itemCount = 7};
        bool isTimeOver = false;
        connect(
            &scene.flow, &CleanupFlow::removed, this,
            [&] {
                // In the same breath, so that the first one's time ends while a newer banner is up.
                scene.state.setLastCleanup(newer);
                QTimer::singleShot(1, this, [&] { isTimeOver = true; });
            },
            Qt::SingleShotConnection);
        scene.flow.remove({nothing});
        QVERIFY(waitUntil([&] { return isTimeOver; }));
        QCOMPARE(scene.state.lastCleanup(), std::optional(newer));
        QVERIFY(!scene.remove({nothing}).id.isNull());
        QVERIFY(waitUntil([&] { return !scene.state.lastCleanup(); }));
    }

    void whatMustStayStays()
    {
        Scene scene;
        const auto all = scene.items(scene.mac.allIds());
        QStringList paths;
        for (const char *path :
             {"Library/Caches/pip/wheels", "Desktop/report again.pdf", "Downloads/setup.dmg", "Projects",
              "Library/Application Support/Loom", "Library/Developer/Xcode/DerivedData/.kib"})
            paths.append(scene.mac.home() + u'/' + QLatin1String(path));
        scene.state.machine().settings->change(u"neverRemove"_qs,
                                               [&](auto &) { return QJsonArray::fromStringList(paths); });
        // Found before, and agreed to.
        const CleanupReport report = scene.remove(all);
        paths[0] = scene.mac.home() + u"/Library/Caches/pip/.kib"_qs; // of what the first one lies in
        for (const QString &kept : paths)
            QVERIFY2(QFile::exists(kept), qPrintable(kept));
        QVERIFY(!scene.mac.has(u"Library/Caches/odd"_qs));
        QCOMPARE(report.left.size(), 6U);
        QVERIFY(!scene.mac.runs().contains(u"pip cache purge"_qs));
        // And none of it is offered from now on.
        for (const RemovableItem &item : findEverything(Search::on(scene.state.machine(), {})))
            for (const QString &path : paths)
                QVERIFY(!item.id.contains(path));
    }

    void nothingGoesWhenNobodyKnowsWhatMustStay()
    {
        Scene scene;
        const auto all = scene.items(scene.mac.allIds());
        QCOMPARE(scene.remove(scene.items({scene.mac.allIds()[8]})).canBePutBack, 1);
        const QString runs = scene.mac.runs();
        scene.mac.writeFile(u"home/Library/Preferences/com.swabby.app.json"_qs, {});
        const CleanupReport report = scene.remove(all);
        QCOMPARE(report.left, all);
        QVERIFY(report.freedBytes == 0 && leftText(report).contains(u"(it is empty)"_qs));
        QCOMPARE(scene.mac.runs(), runs);
        QVERIFY(scene.mac.has(u"Library/Caches/pip"_qs) && scene.flow.canPutBack());
    }

    void whatWentWithSomethingElseIsNotLeft()
    {
        Scene scene;
        const auto all = scene.items(scene.mac.allIds());
        QFile::remove(scene.mac.home() + u"/Downloads/setup.dmg"_qs);
        QDir(scene.mac.home() + u"/Library/Caches/pip"_qs).removeRecursively();
        QCOMPARE(scene.remove(all).left.size(), 0U);
    }

    void whatChangedSinceItWasShownStays()
    {
        Scene scene;
        const auto all = scene.items(scene.mac.allIds());
        QDir().rename(scene.mac.home() + u"/Downloads/setup.dmg"_qs, scene.mac.home() + u"/moved"_qs);
        scene.mac.writeFile(u"home/Downloads/setup.dmg"_qs, "another");
        QDir().rename(scene.mac.home() + u"/Library/Caches/pip"_qs, scene.mac.home() + u"/pip"_qs);
        QFile::link(scene.mac.home() + u"/pip"_qs, scene.mac.home() + u"/Library/Caches/pip"_qs);
        scene.mac.writeFile(u"home/Downloads/report.pdf"_qs, QByteArray(5'000, 's'));
        scene.mac.writeFile(u"home/Projects/old/node_modules/new.js"_qs, "x");
        QCOMPARE(scene.remove(all).left.size(), 4U);
        for (const char *kept : {"Downloads/setup.dmg", "pip/.kib", "Downloads/report.pdf",
                                 "Desktop/report again.pdf", "Projects/old/node_modules/new.js"})
            QVERIFY2(scene.mac.has(QLatin1String(kept)), kept);
    }

    void nothingGoesToTheTrashOffTheRecord()
    {
        Scene scene;
        const auto all = scene.items(scene.mac.allIds());
        scene.mac.writeFile(u"home/Library/Application Support/Swabby/put-back.json/in the way"_qs, {});
        const CleanupReport report = scene.remove(all);
        QCOMPARE(report.left.size(), 4U);
        QVERIFY(leftText(report).contains(u"cannot write down where it was"_qs));
        QVERIFY(!scene.mac.has(u"Library/Caches/pip"_qs) && scene.mac.has(u"Downloads/setup.dmg"_qs));
    }

    void aRunThatIsEndedFinishesTheThingAtHand()
    {
        FullMac mac;
        holdDocker(mac); // after the duplicate and before the download
        const auto machine = mac.open();
        const auto all = findEverything(Search::on(*machine, {}));
        const PutBackRecord record(machine->places.applicationData);
        QVERIFY(PutBackRecord(machine->places.applicationData).add({"/a", "/nowhere/b", {}}));
        {
            AppState state(machine, Record::nothing);
            CleanupFlow flow(state);
            QVERIFY(waitUntil([&] { return flow.canPutBack(); }));
            flow.remove(all);
            QVERIFY(waitUntil([&] { return QFile::exists(mac.folder() + u"/held"_qs); }));
            QVERIFY(!flow.canPutBack());
            // Each thing is on record before the next one goes, as a killed program would leave it.
            QCOMPARE(record.load().size(), std::size_t(1));
            machine->stop.requestStop();
        }
        QVERIFY(!mac.has(u"Library/Caches/pip"_qs) && mac.has(u"Downloads/setup.dmg"_qs));
        QCOMPARE(record.load().size(), std::size_t(1));
        QCOMPARE(Settings(*machine->settings).value(setting<"weeklyBytesFreed">), 0);
    }

    void aRunThatMovesNothingTakesNothingAway()
    {
        Scene scene;
        const auto copy = scene.items({scene.mac.allIds()[3]});
        holdDocker(scene.mac);
        scene.flow.remove({RemovableItem::of(DockerPrune{1})});
        QVERIFY(waitUntil([&] { return QFile::exists(scene.mac.folder() + u"/held"_qs); }));
        QCOMPARE(scene.remove(copy).canBePutBack, 1);
        QFile gate(scene.mac.folder() + u"/gate"_qs);
        QSignalSpy removed(&scene.flow, &CleanupFlow::removed);
        QVERIFY(gate.open(QIODevice::WriteOnly));
        gate.close();
        QVERIFY(waitUntil([&] { return !removed.isEmpty(); }));
        QVERIFY(scene.flow.canPutBack());
    }

    void puttingBack()
    {
        Scene scene;
        QSignalSpy restored(&scene.flow, &CleanupFlow::restored);
        QCOMPARE(scene.remove(scene.items(scene.mac.allIds())).canBePutBack, 5);
        QVERIFY(scene.flow.canPutBack());
        scene.mac.writeFile(u"home/Downloads/setup.dmg"_qs, "in the way");
        scene.flow.putBack();
        scene.flow.putBack(); // a second press while the first one works
        QVERIFY(waitUntil([&] { return !restored.isEmpty(); }));
        QCOMPARE(restored.takeFirst(), (QVariantList{qint64(4), qint64(1)}));
        QVERIFY(!scene.state.lastCleanup());
        QVERIFY(scene.mac.has(u"Projects/old/node_modules/.kib"_qs));
        QCOMPARE(QFileInfo(scene.mac.home() + u"/Downloads/setup.dmg"_qs).size(), 10);
        QVERIFY(scene.flow.canPutBack());
        QFile::remove(scene.mac.home() + u"/Downloads/setup.dmg"_qs);
        scene.flow.putBack();
        QVERIFY(waitUntil([&] { return !restored.isEmpty(); }));
        QCOMPARE(restored.takeFirst(), (QVariantList{qint64(1), qint64(0)}));
        QVERIFY(!scene.flow.canPutBack());
        QCOMPARE(QFileInfo(scene.mac.home() + u"/Downloads/setup.dmg"_qs).size(), 30'000'000);

        // Of two removals the latest one's things come back, and no others.
        const QStringList ids = scene.mac.allIds();
        const auto copy = scene.items({ids[3]});
        QCOMPARE(scene.remove(scene.items({ids[8]})).canBePutBack, 1);
        QCOMPARE(scene.remove(copy).canBePutBack, 1);
        QCOMPARE(PutBackRecord(scene.state.machine().places.applicationData).load().size(), std::size_t(1));
        scene.flow.putBack();
        QVERIFY(waitUntil([&] { return !restored.isEmpty(); }));
        QCOMPARE(restored.takeFirst(), (QVariantList{qint64(1), qint64(0)}));
        QVERIFY(!scene.flow.canPutBack());
    }

    void aSearchListsNothingThatGoesMeanwhile()
    {
        Scene scene;
        CloudAI ai(scene.state.sharedMachine(), ModelAddresses());
        StorageScans scans(scene.state, ai);
        const auto found = [&] { return scans.findings(ClutterKind::duplicates).items; };
        const auto isOver = [&] { return !scans.isScanning(ClutterKind::duplicates); };
        scans.begin(ClutterKind::duplicates);
        QVERIFY(waitUntil(isOver));
        const auto copies = found();
        QCOMPARE(copies.size(), std::size_t{1});

        scans.begin(ClutterKind::duplicates);
        scans.forget(copies);
        QVERIFY(waitUntil(isOver));
        QVERIFY(found().empty());

        // Another removal does not make it forget that this one touched the list.
        const auto other = scene.items({scene.mac.allIds().at(8)});
        scans.forget(other);
        scans.endRemoval({});
        QVERIFY(isOver());
        scans.endRemoval(other);
        QVERIFY(!isOver());
        QVERIFY(waitUntil(isOver));
        QVERIFY(found() == copies);
    }
};

QTEST_GUILESS_MAIN(CleanupFlowTest)
#include "CleanupFlowTest.moc"
