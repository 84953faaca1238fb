#include "Clutter.h"

#include "cleanup/DeveloperCleanup.h"

#include <QtTest/QTest>

#include <future>
#include <limits>

using namespace swabby;
using DeveloperCleanup::DockerState;

namespace {

constexpr qint64 most = std::numeric_limits<qint64>::max();

QString words(const std::vector<SimulatorRuntimeInfo> &runtimes)
{
    QStringList lines;
    for (const SimulatorRuntimeInfo &runtime : runtimes)
        lines.append(QString(u"%1|%2|%3|%4"_qs)
                         .arg(runtime.identifier, runtime.name)
                         .arg(runtime.sizeBytes)
                         .arg(runtime.daysSinceUsed ? QString::number(*runtime.daysSinceUsed) : u"-"_qs));
    return lines.join(u'\n');
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
    QStringList rows;
    for (const DockerRow &row : status.rows)
        rows.append(row.type + u'=' + row.reclaimable);
    return rows.join(u';');
}

} // namespace

class DeveloperCleanupTest : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void byteStrings_data()
    {
        QTest::addColumn<QByteArray>("text");
        QTest::addColumn<qint64>("bytes");
        const auto row = [](const char *text, qint64 bytes) {
            QTest::addRow("'%s'", text) << QByteArray(text) << bytes;
        };
        row("1.25GB (45%)", 1'250'000'000);
        row("512kB", 512'000);
        row("0B", 0);
        row("garbage", 0);
        row("", 0);
        row("(45%)", 0);
        row("17", 17);
        row("17.9B", 17);
        row("  3 mb  ", 3'000'000);
        row("2TB(1%)", 2'000'000'000'000);
        row("1GiB", 1);
        row("5PB", 5);
        row(".5KB", 500);
        row("5.KB", 5'000);
        row("1.2.3GB", 0);
        row(".", 0);
        row("-5GB", 0);
        row("9999999999TB", most);
        row("9223372036854775807", most);
    }

    void byteStrings()
    {
        QFETCH(QByteArray, text);
        const qint64 bytes = parseByteString(text.toStdString());
        QTEST(bytes, "bytes");
    }

    void times_data()
    {
        QTest::addColumn<QString>("text");
        QTest::addColumn<qint64>("seconds");
        const auto row = [](const char *text, qint64 seconds = -1) {
            QTest::addRow("%s", text) << QString::fromLatin1(text) << seconds;
        };
        row("1970-01-02T00:00:01Z", 86'401);
        row("2024-02-29T23:59:59Z", 1'709'251'199);
        row("2024-02-29T23:59:59+00:00", 1'709'251'199);
        row("1970-01-02T05:30:01+05:30", 86'401);
        row("1970-01-01T16:00:01-08:00", 86'401);
        row("");
        row("2023-02-29T00:00:00Z");
        row("2024-02-29T24:00:00Z");
        row("2024-02-29T23:59:60Z");
        row("2024-02-29T23:59:59");
        row("2024-02-29T23:59:59.5Z");
        row("2024-02-29 23:59:59Z");
        row("2024-02-29T23:59:59z");
        row("2024-02-29T23:59:59Zx");
        row("2024-02-29T23:59:59+0000");
        row("2024-02-29T23:59:59+00:60");
        row("2024-02-29T23:59:59*00:00");
        row("2024-2-29T23:59:59Z");
        row("+024-02-28T23:59:59Z");
        row("20240229T235959Z");
    }

    void times()
    {
        QFETCH(QString, text);
        const qint64 seconds = parseIsoTime(text).value_or(-1);
        QTEST(seconds, "seconds");
    }

    void runtimes_data()
    {
        QTest::addColumn<QByteArray>("json");
        QTest::addColumn<QString>("listed");
        const auto row = [](const char *name, const QByteArray &json, const QString &listed) {
            QTest::newRow(name) << json << listed;
        };
        const auto one = [](const QMap<QByteArray, QByteArray> &facts) {
            return "{\"a\":" + record(facts) + "}";
        };
        const QString usual = u"4B0E|iOS 17.2|7310442496|-"_qs;
        row("usual", one({}), usual);
        row("never used, said so", one({{"lastUsedAt", "null"}}), usual);
        row("used at no time", one({{"lastUsedAt", "\"yesterday\""}}), usual);
        row("more keys", one({{"state", "[1,{}]"}}), usual);
        row("used 14 days ago", one({{"lastUsedAt", "\"2026-06-02T09:30:00Z\""}}),
            u"4B0E|iOS 17.2|7310442496|14"_qs);
        row("a second less", one({{"lastUsedAt", "\"2026-06-02T09:30:01Z\""}}),
            u"4B0E|iOS 17.2|7310442496|13"_qs);
        row("used ahead of time", one({{"lastUsedAt", "\"2026-06-18T09:30:00Z\""}}),
            u"4B0E|iOS 17.2|7310442496|-2"_qs);
        for (const auto &[mark, platform] :
             {std::pair{"xrOS-1-0", "visionOS"}, std::pair{"watchOS-10-2", "watchOS"},
              std::pair{"tvOS-17-2", "tvOS"}, std::pair{"tvOS-watchOS-xrOS", "visionOS"},
              std::pair{"", "iOS"}})
            QTest::addRow("platform %s", mark)
                << one({{"runtimeIdentifier",
                         QByteArray("\"com.apple.CoreSimulator.SimRuntime.") + mark + "\""}})
                << QString(u"4B0E|%1 17.2|7310442496|-"_qs).arg(QLatin1String(platform));
        // One bad record spoils them all.
        for (const auto &[key, value] :
             {std::pair{"identifier", ""}, std::pair{"identifier", "5"},
              std::pair{"runtimeIdentifier", "null"}, std::pair{"version", ""}, std::pair{"version", "17.2"},
              std::pair{"sizeBytes", ""}, std::pair{"sizeBytes", "\"5\""}, std::pair{"sizeBytes", "1.5"},
              std::pair{"sizeBytes", "1e300"}, std::pair{"sizeBytes", "9223372036854775808"},
              std::pair{"lastUsedAt", "5"}})
            QTest::addRow("bad %s %s", key, value)
                << QByteArray("{\"a\":" + record() + ",\"b\":" + record({{key, value}}) + "}") << QString();
        row("large", one({{"sizeBytes", "9007199254740993"}}), u"4B0E|iOS 17.2|9007199254740993|-"_qs);
        row("no record", "{\"a\":5}", {});
        row("a list", "[" + record() + "]", {});
        row("none", "{}", {});
        row("text behind it", one({}) + "\nwarning", {});
        row("ended in the middle", one({}).chopped(1), {});
        row("nothing", "", {});
        row("longest unused first",
            "{\"a\":" + record({{"identifier", "\"never\""}}) + ",\"b\":" +
                record({{"identifier", "\"ahead\""}, {"lastUsedAt", "\"2026-07-02T09:30:00Z\""}}) +
                ",\"c\":" +
                record({{"identifier", "\"today\""}, {"lastUsedAt", "\"2026-06-16T09:30:00Z\""}}) +
                ",\"d\":" +
                record({{"identifier", "\"long ago\""}, {"lastUsedAt", "\"2026-05-17T09:30:00Z\""}}) + "}",
            u"long ago|iOS 17.2|7310442496|30\nnever|iOS 17.2|7310442496|-\n"
            "today|iOS 17.2|7310442496|0\nahead|iOS 17.2|7310442496|-16"_qs);
    }

    void runtimes()
    {
        QFETCH(QByteArray, json);
        const Clutter mac;
        mac.writeFile(u"listing"_qs, json);
        mac.addTool(u"/usr/bin/xcrun"_qs, "cat \"$MACHINE_DIR/listing\"");
        QTEST(words(DeveloperCleanup::scanSimulatorRuntimes({*mac.machine, {}, {}})), "listed");
        QCOMPARE(mac.runs(), u"/usr/bin/xcrun simctl runtime list -j"_qs);
    }

    void docker_data()
    {
        QTest::addColumn<QByteArray>("script");
        QTest::addColumn<QString>("status");
        QTest::addColumn<qint64>("bytes");
        const auto row = [](const char *name, const char *script, const QString &status, qint64 bytes = 0) {
            QTest::newRow(name) << QByteArray(script) << status << bytes;
        };
        const QString notRunning = u"not running"_qs;
        row("usual", R"(printf 'Images\t1.25GB (45%%)\nLocal Volumes\t318.4MB\n')",
            u"Images=1.25GB (45%);Local Volumes=318.4MB"_qs, 1'568'400'000);
        row("other lines", R"(printf 'WARNING: x\n\nImages\t5kB\tmore\n\tempty\r\n')",
            u"Images=5kB;=empty"_qs, 5'000);
        row("more than any disk", R"(printf 'a\t9999999TB\nb\t9999999TB')", u"a=9999999TB;b=9999999TB"_qs,
            most);
        row("not running", "echo 'Cannot connect to the daemon' >&2; printf 'Images\\t5kB'", notRunning);
        row("blank", R"(printf ' \n\t\n')", notRunning);
        row("no rows", "echo Images", notRunning);
        row("nothing", "exit 1", notRunning);
        row("no text", R"(printf 'Images\t\377')", notRunning);
    }

    void docker()
    {
        QFETCH(QByteArray, script);
        const Clutter mac;
        mac.addTool(u"/usr/local/bin/docker"_qs, script);
        const auto status = DeveloperCleanup::dockerStatus({*mac.machine, {}, {}});
        QTEST(dockerWords(status), "status");
        const qint64 bytes = DeveloperCleanup::estimatedReclaimableBytes(status.rows);
        QTEST(bytes, "bytes");
        QCOMPARE(mac.runs(), u"/usr/local/bin/docker system df --format {{.Type}}\t{{.Reclaimable}}"_qs);
    }

    void whereDockerIs()
    {
        const Clutter mac;
        QCOMPARE(dockerWords(DeveloperCleanup::dockerStatus({*mac.machine, {}, {}})), u"not installed"_qs);
        QVERIFY(!DeveloperCleanup::prune(*mac.machine));
        QCOMPARE(mac.runs(), QString());
        mac.addTool(u"/opt/homebrew/bin/docker"_qs, "printf 'a\\tb'");
        QCOMPARE(dockerWords(DeveloperCleanup::dockerStatus({*mac.machine, {}, {}})), u"a=b"_qs);
        mac.addTool(u"/usr/local/bin/docker"_qs, ":");
        QVERIFY(DeveloperCleanup::prune(*mac.machine));
        QVERIFY(mac.runs().endsWith(u"\n/usr/local/bin/docker system prune -af"_qs));
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
