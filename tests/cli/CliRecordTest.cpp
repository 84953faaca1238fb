#include "cleanup/FullMac.h"
#include "cli/Terminal.h"
#include "platform/ThisComputer.h"
#include "platform/machinefolder/FolderMachine.h"
#include "recording/FolderWriter.h"
#include "recording/Recording.h"
#include "recording/Rewriting.h"

#include <QtCore/QDir>
#include <QtCore/QDirIterator>
#include <QtTest/QTest>

using namespace swabby;

namespace {

const QStringList documents = {u"snapshot"_qs,
                               u"context"_qs,
                               u"history"_qs,
                               u"startup"_qs,
                               u"startup disabled"_qs,
                               u"caches"_qs,
                               u"items"_qs,
                               u"caches --unknown"_qs,
                               u"duplicates"_qs,
                               u"deep-scan"_qs,
                               u"apps"_qs,
                               u"developer"_qs,
                               u"check"_qs,
                               u"settings cpuRed"_qs};

/// Busy, and with something of every kind.
struct BusyMac : FullMac {
    BusyMac()
        : FullMac({{u"cpuTicks"_qs, QJsonArray{QJsonArray{1, 2, 3, 4}}},
                   {u"thermalState"_qs, u"serious"_qs},
                   {u"disk"_qs, QJsonObject{{u"freeBytes"_qs, 10}, {u"totalBytes"_qs, 1000}}},
                   {u"powerSource"_qs, QJsonObject{{u"Current Capacity"_qs, 84}}},
                   {u"runningApplications"_qs,
                    QJsonArray{QJsonObject{{u"pid"_qs, 50}, {u"bundleID"_qs, u"org.example.mill"_qs}}}}})
    {
        setProcesses({"50 1 90 1.5 90000 /Applications/Secret Mill.app/Contents/MacOS/Secret Mill",
                      "51 1 3 2 70000 /Applications/Firefox.app/Contents/MacOS/firefox",
                      "52 1 1 1 5000 /usr/libexec/quiet"});
        addTool(u"/usr/bin/top"_qs,
                R"(printf 'PID COMMAND POWER\nPID COMMAND POWER\n50 Secret Mill 12.5\n')");
        addTool(u"/usr/sbin/system_profiler"_qs,
                R"(printf 'Serial Number: SECRET\n Cycle Count: 12\n Maximum Capacity: 91%%\n')");
        addTool(u"/bin/launchctl"_qs, R"(printf '{\n\tpid = 50\n\tTOKEN => secret\n}\n')");
        for (const QByteArray &label : QByteArrayList{"org.secret.agent", "org.secret.lost"})
            writeFile(u"home/Library/LaunchAgents/"_qs + QString::fromLatin1(label) + u".plist"_qs,
                      "<plist><dict><key>Label</key><string>" + label +
                          "</string><key>Program</key><string>" + folder().toUtf8() + "/root/" + label +
                          "</string></dict></plist>");
        writeFile(u"root/org.secret.agent"_qs, {});
        run({u"--machine"_qs, folder(), u"settings"_qs, u"cpuRed"_qs, u"77"_qs});
        run({u"--machine"_qs, folder(), u"pin"_qs, u"Secret Mill"_qs});
    }
};

Answer onFolder(const QString &folder, const QString &arguments, bool runsTools)
{
    QStringList words = {u"--machine"_qs, folder};
    if (runsTools)
        words.append(u"--run-tools"_qs);
    return run(words + arguments.split(u' ') + QStringList(u"--json"_qs));
}

QString figuresOf(const MachineSample &sample)
{
    const SystemStats &stats = sample.stats;
    QString text = u"%1 %2 %3 %4 %5\n"_qs.arg(stats.cpuUsagePercent)
                       .arg(stats.memUsedBytes)
                       .arg(stats.swapUsedBytes)
                       .arg(stats.diskFreeBytes)
                       .arg(stats.memPressurePercent);
    for (const auto *list : {&sample.processes, &sample.batteryDrainers, &sample.networkUsers})
        for (const ProcessSample &process : *list)
            text += u"%1 %2 %3 %4 %5 %6\n"_qs.arg(process.pid)
                        .arg(process.name.section(u'/', -1)) // as a Mac's ps has it, of a kernel's thread too
                        .arg(process.cpuPercent)
                        .arg(process.rssBytes)
                        .arg(process.energyImpact)
                        .arg(process.networkBytesPerSec);
    for (const BrowserRollupEntry &browser : sample.browserRollups)
        text += u"%1 %2\n"_qs.arg(browser.browserName).arg(browser.totalMemBytes);
    for (const LoginItem &item : sample.loginItems)
        text += u"%1 %2 %3 %4\n"_qs.arg(item.label)
                    .arg(item.isLoaded)
                    .arg(item.isOrphaned)
                    .arg(item.bootDelaySeconds.value_or(-1));
    return text;
}

/// The paths of all that lies there, and what is in it.
QByteArray everythingIn(const QString &folder)
{
    QByteArray all;
    for (QDirIterator files(folder, QDir::Files | QDir::Hidden, QDirIterator::Subdirectories);
         files.hasNext();) {
        QFile file(files.next());
        all += file.fileName().mid(folder.size()).toUtf8() + '\n';
        if (file.open(QIODevice::ReadOnly) && file.size() < 1'000'000)
            all += file.readAll();
    }
    return all;
}

} // namespace

class CliRecordTest : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void init() { qunsetenv("ANTHROPIC_API_KEY"); }

    void aReplayEqualsItsRecording_data()
    {
        QTest::addColumn<bool>("runsTools");
        QTest::newRow("with its tools") << true;
        QTest::newRow("without") << false;
    }
    void aReplayEqualsItsRecording()
    {
        QFETCH(bool, runsTools);
        const BusyMac mac;
        const QTemporaryDir place;
        const QString folder = place.filePath(u"in/a record"_qs);
        const QString moved = place.filePath(u"elsewhere"_qs);
        const QStringList record = {u"--machine"_qs, mac.folder(), u"record"_qs, folder, u"--with-names"_qs};
        const QStringList tools = runsTools ? QStringList(u"--run-tools"_qs) : QStringList();
        const Answer recorded = run(record + tools);
        QVERIFY2(recorded.status == 0, recorded.problems.constData());
        QCOMPARE(run(record + tools).status, 1); // never over something
        QVERIFY(QDir().rename(folder, moved));
        for (const char *word : {"TOKEN", "Serial"}) // no names
            QVERIFY2(!everythingIn(moved).contains(word), word);
        for (const QString &verb : documents) {
            const Answer original = onFolder(mac.folder(), verb, runsTools);
            Answer replay = onFolder(moved, verb, false);
            QCOMPARE(replay.output.replace(moved.toUtf8(), "DIR"),
                     QByteArray(original.output).replace(mac.folder().toUtf8(), "DIR"));
            QVERIFY(replay.output.size() > 1 && replay.problems == (runsTools ? "" : replay.problems));
        }
    }

    void itNamesNobody()
    {
        const BusyMac mac;
        const QTemporaryDir place;
        const QString folder = place.filePath(u"record"_qs);
        QVERIFY(QDir().mkpath(folder));
        QCOMPARE(runOn(mac, {u"record"_qs, folder}).status, 0);
        QVERIFY(!(QFile::permissions(folder) & (QFile::ReadGroup | QFile::ReadOther)));
        const QByteArray all = everythingIn(folder);
        for (const char *word : {"secret", "SECRET", "Secret", "report", "setup", "org.example"})
            QVERIFY2(!all.contains(word), all.mid(qMax(0, all.indexOf(word) - 100), 200).constData());
        QVERIFY(!all.contains(mac.folder().toUtf8()));
        // What rules go by is the same.
        for (const auto &[verb, field] : {std::pair(u"items"_qs, u"sizeBytes"_qs),
                                          {u"startup"_qs, u"isOrphaned"_qs},
                                          {u"deep-scan"_qs, u"daysOld"_qs}}) {
            QStringList figures[2];
            for (const bool isReplay : {false, true})
                for (const QJsonValue &row :
                     onFolder(isReplay ? folder : mac.folder(), verb, !isReplay).json().toArray())
                    figures[isReplay].append(row[field].toVariant().toString());
            figures[0].sort();
            figures[1].sort();
            QVERIFY(!figures[0].isEmpty());
            QCOMPARE(figures[1], figures[0]);
        }
        const QJsonValue state = onFolder(folder, u"snapshot"_qs, false).json();
        QCOMPARE(state[u"stats"][u"batteryCycleCount"], QJsonValue(12));
        QCOMPARE(state[u"browserRollups"][0][u"browserName"], QJsonValue(u"Firefox"_qs));
        QCOMPARE(state[u"pinnedNames"][0], state[u"batteryDrainers"][0][u"name"]);
    }

    void ofACommandStaysWhatRulesGoBy_data()
    {
        QTest::addColumn<QString>("command");
        QTest::addColumn<QString>("written");
        QTest::newRow("a browser's word above")
            << u"/Users/mia/acme-firefox-ext/bin/tool"_qs << u"/Users/name-1/name-2/bin/name-3"_qs;
        QTest::newRow("a browser's word") << u"/Users/mia/acme-firefox"_qs << u"/Users/name-1/Firefox"_qs;
        QTest::newRow("a browser") << u"/Applications/Firefox.app/Contents/MacOS/firefox"_qs
                                   << u"/Applications/Firefox.app/Contents/MacOS/firefox"_qs;
        QTest::newRow("a bundle") << u"/Applications/My Safari.app/Contents/MacOS/tool"_qs
                                  << u"/Applications/Safari.app/Contents/MacOS/name-1"_qs;
        QTest::newRow("Swabby's word")
            << u"/Users/mia/swabby-acme/tool"_qs << u"/Users/name-1/swabby/name-2"_qs;
        QTest::newRow("brackets") << u"(tool)"_qs << u"(name-1)"_qs;
        QTest::newRow("the system's") << u"/lib64/tool"_qs << u"/lib64/tool"_qs;
        QTest::newRow("not the system's") << u"/library/tool"_qs << u"/name-1/name-2"_qs;
    }
    void ofACommandStaysWhatRulesGoBy()
    {
        QFETCH(QString, command);
        const TemporaryMachine mac;
        Rewriting rewriting(*mac.open(), PeoplesNames::replaced);
        QTEST(rewriting.command(command), "written");
    }

    void nothingOutsideIsWritten()
    {
        const QTemporaryDir place;
        QFile outside(place.filePath(u"outside"_qs));
        QVERIFY(outside.open(QIODevice::ReadWrite) && outside.write("mine") == 4 && outside.flush());
        FolderWriter within(place.filePath(u"linked"_qs));
        QVERIFY(outside.link(place.filePath(u"linked/file"_qs)));
        within.addFile(placeIn("file"), "theirs");
        QVERIFY(!within.problem().isEmpty());
        FolderWriter folder(place.filePath(u"record"_qs));
        folder.addFile(placeIn("home/file"), "long");
        folder.addFile(placeIn("home/file"), "new");
        QCOMPARE(folder.problem(), QString());
        QVERIFY(everythingIn(place.filePath(u"record"_qs)).endsWith("\nnew"));
        folder.addFile(placeIn("home/../../outside"), "theirs");
        QVERIFY(!folder.problem().isEmpty());
        QVERIFY(outside.seek(0));
        QCOMPARE(outside.readAll(), QByteArray("mine"));
    }

    void thisComputerToo()
    {
        const QTemporaryDir home;
        qputenv("HOME", home.path().toUtf8());
        QFile cache(home.filePath(u".cache/thumbnails/x"_qs));
        QVERIFY(QDir().mkpath(home.filePath(u".cache/thumbnails"_qs)) && cache.open(QIODevice::WriteOnly));
        QVERIFY(cache.write(QByteArray(2'000'000, 'x')) > 0 && cache.flush());
        const QString folder = home.filePath(u"record"_qs);
        const Recording recording = recordMachine(*makeThisComputer(), folder, PeoplesNames::kept, {});
        QCOMPARE(recording.problem, QString());
        QString problem;
        const auto replay = makeFolderMachine({folder}, &problem);
        const MachineSample sample = MachineSampler(*replay).sample();
        QCOMPARE(figuresOf(sample).split(u'\n'), figuresOf(recording.sample).split(u'\n'));
        QVERIFY(!sample.processes.isEmpty());
        const auto caches = onFolder(folder, u"caches"_qs, false).json().toArray();
        QCOMPARE(caches.at(0)[u"path"], QJsonValue(folder + u"/home/.cache/thumbnails"_qs));
    }
};

QTEST_GUILESS_MAIN(CliRecordTest)
#include "CliRecordTest.moc"
