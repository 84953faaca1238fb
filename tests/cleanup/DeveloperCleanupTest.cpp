#include "Clutter.h"

#include "cleanup/ContainerEngine.h"
#include "cleanup/DeveloperCleanup.h"
#include "support/Table.h"

#include <QtTest/QTest>

#include <future>

using namespace swabby;
using DeveloperCleanup::DockerState;

namespace {

QString words(const std::vector<SimulatorRuntimeInfo> &runtimes)
{
    return lines(runtimes, [](const SimulatorRuntimeInfo &runtime) {
        const auto days = runtime.daysSinceUsed;
        return QString(u"%1|%2|%3|%4"_qs)
            .arg(runtime.identifier, runtime.name)
            .arg(runtime.sizeBytes)
            .arg(days ? QString::number(*days) : u"-"_qs);
    });
}

/// One runtime record with these facts in place of the usual ones; an empty fact leaves the key out.
QByteArray record(const QMap<QByteArray, QByteArray> &facts = {})
{
    QMap<QByteArray, QByteArray> all = {
        {"identifier", "\"4B0E\""},
        {"runtimeIdentifier", "\"com.apple.CoreSimulator.SimRuntime.iOS-17-2\""},
        {"sizeBytes", "7310442496"},
        {"version", "\"17.2\""}};
    all.insert(facts);
    QByteArray text;
    for (const QByteArray &key : all.keys())
        if (!all[key].isEmpty())
            text += (text.isEmpty() ? "" : ",") + ("\"" + key + "\":") + all[key];
    return "{" + text + "}";
}

QString dockerWords(const DeveloperCleanup::DockerStatus &status)
{
    if (status.state != DockerState::available)
        return status.state == DockerState::notInstalled ? u"not installed"_qs : u"not running"_qs;
    return lines(status.rows, [](const DockerRow &row) { return row.type + u'=' + row.reclaimable; })
        .replace(u'\n', u';');
}

} // namespace

class DeveloperCleanupTest : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void byteStrings()
    {
        compareTable(fixture(u"cleanup/byte_strings.txt"_qs),
                     [](const Cells &row) { return QString::number(parseByteString(row.string(0))); });
    }

    void times()
    {
        compareTable(fixture(u"cleanup/times.txt"_qs), [](const Cells &row) {
            const auto seconds = parseIsoTime(row.text(0));
            return seconds ? QString::number(qint64(*seconds)) : u"none"_qs;
        });
    }

    void runtimes()
    {
        const Clutter mac;
        mac.addTool(u"/usr/bin/xcrun"_qs, "cat \"$MACHINE_DIR/listing\"");
        const auto listed = [&](const QByteArray &json) {
            mac.writeFile(u"listing"_qs, json);
            return words(DeveloperCleanup::scanSimulatorRuntimes({*mac.machine, {}, {}}));
        };
        const auto one = [](const QMap<QByteArray, QByteArray> &facts) {
            return "{\"a\":" + record(facts) + "}";
        };
        // A key of the only record, its value (none takes the key away), and what is listed of it.
        compareTable(fixture(u"cleanup/runtimes.txt"_qs), [&](const Cells &row) {
            return listed(one({{row[0], row[1]}})).replace(u'|', u',');
        });
        QCOMPARE(mac.runs().section(u'\n', 0, 0), u"/usr/bin/xcrun simctl runtime list -j"_qs);
        // One bad record spoils them all.
        compareTable(fixture(u"cleanup/bad_runtimes.txt"_qs), [&](const Cells &row) {
            return listed("{\"a\":" + record() + ",\"b\":" + record({{row[0], row[1]}}) + "}");
        });
        for (const QByteArray &json : {QByteArray("{\"a\":5}"), "[" + record() + "]", QByteArray("{}"),
                                       one({}) + "\nwarning", one({}).chopped(1), QByteArray()})
            QVERIFY2(listed(json).isEmpty(), json);
        // The longest unused first.
        compareTable(fixture(u"cleanup/runtimes_in_order.txt"_qs), [&](const Cells &row) {
            QByteArrayList several;
            for (const QByteArray &words : row[0].split(';')) {
                const QByteArray name = words.split('=').first(), used = words.split('=').last();
                several.append('"' + name +
                               "\":" + record({{"identifier", '"' + name + '"'}, {"lastUsedAt", used}}));
            }
            return listed('{' + several.join(',') + '}').replace(u'\n', u' ').replace(u'|', u',');
        });
    }

    void docker()
    {
        compareTable(fixture(u"cleanup/docker.txt"_qs), [](const Cells &row) {
            const Clutter mac;
            mac.addTool(u"/usr/local/bin/docker"_qs, row[1]);
            const auto status = DeveloperCleanup::dockerStatus({*mac.machine, {}, {}});
            const qint64 bytes = DeveloperCleanup::estimatedReclaimableBytes(status.rows);
            const bool isAsked = mac.runs() == u"/usr/local/bin/docker system df --format "
                                               "{{.Type}}\t{{.Reclaimable}}";
            return isAsked ? dockerWords(status) + u": "_qs + QString::number(bytes) : mac.runs();
        });
    }

    void whereDockerIs()
    {
        const Clutter mac;
        QCOMPARE(dockerWords(DeveloperCleanup::dockerStatus({*mac.machine, {}, {}})), u"not installed"_qs);
        QVERIFY(!DeveloperCleanup::prune(*mac.machine, {}));
        QCOMPARE(mac.runs(), QString());
        mac.addTool(u"/opt/homebrew/bin/docker"_qs, "printf 'a\\tb'");
        QCOMPARE(dockerWords(DeveloperCleanup::dockerStatus({*mac.machine, {}, {}})), u"a=b"_qs);
        mac.addTool(u"/usr/local/bin/docker"_qs, ":");
        QVERIFY(DeveloperCleanup::prune(*mac.machine, {}));
        QVERIFY(mac.runs().endsWith(u"\n/usr/local/bin/docker system prune -af"_qs));
    }

    void whichEngine()
    {
        // DOCKER_HOST, DOCKER_CONTEXT, the tool's settings, and the context called "near".
        compareTable(fixture(u"cleanup/container_engines.txt"_qs), [](const Cells &row) {
            const Clutter mac;
            mac.writeFile(u"config.json"_qs, row[3]);
            mac.writeFile(u"contexts/meta/46ba34770bccfde756708d47d83fb7c8257fe8a4b3a35f25d385a8284021f476"
                          "/meta.json"_qs,
                          row[4]);
            const auto engine =
                localContainerEngine({row.string(1), row.string(2), mac.folder().toStdString()});
            return QString::fromStdString(engine.value_or("none"));
        });
    }

    void theEngineOfThisComputer()
    {
        const Clutter mac;
        mac.addTool(u"/usr/local/bin/docker"_qs, ":");
        mac.addTool(u"/usr/bin/env"_qs, "printf 'Images\t5kB'");
        const auto item = [&] {
            return DeveloperCleanup::clutterOf(DeveloperCleanup::dockerStatus({*mac.machine, {}, {}}));
        };
        mac.machine->cleanup.containers = ContainerSettings{"unix:///d.sock", {}, {}};
        const DockerPrune found = item();
        mac.machine->cleanup.containers->host = "tcp://far";
        QVERIFY(!DeveloperCleanup::prune(*mac.machine, item().engine));
        QVERIFY(DeveloperCleanup::prune(*mac.machine, found.engine)); // the one that was shown
        const QString run = u"/usr/bin/env DOCKER_HOST=unix:///d.sock DOCKER_CONTEXT= DOCKER_TLS= "
                            "DOCKER_TLS_VERIFY= /usr/local/bin/docker system "_qs;
        QCOMPARE(mac.runs(), run + u"df --format {{.Type}}\t{{.Reclaimable}}\n"_qs + run + u"prune -af"_qs);
    }

    void deletingRuntimes()
    {
        const Clutter mac;
        mac.addTool(u"/usr/bin/xcrun"_qs, "exit 1");
        DeveloperCleanup::deleteSimulatorRuntimes(*mac.machine, {u"4B0E"_qs, u"a b"_qs});
        QCOMPARE(mac.runs(),
                 u"/usr/bin/xcrun simctl runtime delete 4B0E\n/usr/bin/xcrun simctl runtime delete a b"_qs);
    }

    void buildCache()
    {
        const Clutter mac;
        QCOMPARE(DeveloperCleanup::derivedDataSize({*mac.machine, {}, {}}), 0);
        QVERIFY(DeveloperCleanup::clearDerivedData(*mac.machine, {}));
        const QString folder = u"Library/Developer/Xcode/DerivedData"_qs;
        mac.addFolder(folder, 700);
        mac.addFolder(folder + u"/keep"_qs, 500);
        mac.addFolder(folder + u"/go"_qs, 100);
        QCOMPARE(DeveloperCleanup::derivedDataSize({*mac.machine, {}, {}}), 716'800);
        QFile::remove(mac.home() + u'/' + folder + u"/.kib"_qs);
        const ExcludeList excludes = mac.excluding({folder.toStdString() + "/keep/Logs"});
        QCOMPARE(DeveloperCleanup::derivedDataSize({*mac.machine, {}, excludes}), 102'400);
        QVERIFY(DeveloperCleanup::clearDerivedData(*mac.machine, excludes));
        QCOMPARE(mac.asked(), u"empty ~/%1 in ~\nkeep ~/%1/keep"_qs.arg(folder));
        mac.disposal().refused = {mac.homePath(folder.toStdString())};
        QVERIFY(!DeveloperCleanup::clearDerivedData(*mac.machine, {}));
    }

    void aStopEndsTheTools()
    {
        const Clutter mac;
        for (const char *tool : {"/usr/bin/xcrun", "/usr/local/bin/docker"})
            mac.addTool(QString::fromLatin1(tool), R"(: >"$MACHINE_DIR/begun" && exec tail -f /dev/null)");
        const auto ends = [&](auto scan) {
            StopSource stop;
            QFile::remove(mac.folder() + u"/begun"_qs);
            auto result = std::async(std::launch::async, [&] { return scan(ScanControl{stop.token(), {}}); });
            const bool begun = waitUntil([&] { return QFile::exists(mac.folder() + u"/begun"_qs); });
            stop.requestStop();
            return result.get() && begun;
        };
        QVERIFY(ends([&](const ScanControl &control) {
            return DeveloperCleanup::scanSimulatorRuntimes({*mac.machine, control, {}}).empty();
        }));
        QVERIFY(ends([&](const ScanControl &control) {
            return DeveloperCleanup::dockerStatus({*mac.machine, control, {}}).state ==
                   DockerState::notRunning;
        }));
    }

    void whereThereIsNoSuchThing()
    {
        const Clutter mac;
        mac.addTool(u"/usr/bin/xcrun"_qs, "cat");
        mac.machine->cleanup = {};
        QVERIFY(DeveloperCleanup::scanSimulatorRuntimes({*mac.machine, {}, {}}).empty());
        DeveloperCleanup::deleteSimulatorRuntimes(*mac.machine, {u"x"_qs});
        QCOMPARE(DeveloperCleanup::derivedDataSize({*mac.machine, {}, {}}), 0);
        QVERIFY(DeveloperCleanup::clearDerivedData(*mac.machine, {}));
        QCOMPARE(mac.runs() + mac.asked(), QString());
    }
};

QTEST_GUILESS_MAIN(DeveloperCleanupTest)
#include "DeveloperCleanupTest.moc"
