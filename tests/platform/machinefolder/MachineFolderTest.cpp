#include "platform/machinefolder/FolderMachine.h"
#include "platform/machinefolder/MachineDescription.h"
#include "support/Table.h"
#include "support/TemporaryMachine.h"

#include <QtCore/QDir>
#include <QtCore/QJsonDocument>
#include <QtTest/QTest>

#include <sys/stat.h>

using namespace swabby;

namespace {

/// Everything a description says, in one line; the ticks and the heat of four samples.
QString wordsOf(const QByteArray &json)
{
    MachineDescription machine(QJsonDocument::fromJson(json).object());
    QStringList words;
    const auto add = [&](auto value) { words.append(QString::number(value)); };
    const auto addKnown = [&](auto value) { value ? add(*value) : words.append(u"-"_qs); };
    addKnown(machine.now());
    add(machine.userId());
    addKnown(machine.ownProcessId());
    if (const auto pages = machine.memoryPages())
        for (const auto count : {pages->pageSize, pages->active, pages->wired, pages->compressed})
            add(count);
    add(machine.physicalMemory());
    add(machine.swapUsedBytes());
    add(machine.disk().freeBytes);
    add(machine.disk().totalBytes);
    if (const auto source = machine.powerSource()) {
        addKnown(source->currentCapacity);
        addKnown(source->isCharging);
        addKnown(source->timeToEmpty);
        addKnown(source->timeToFullCharge);
    }
    for (int i = 0; i < 4; ++i) {
        const auto ticks = machine.nextCpuTicks();
        words.append(ticks ? QStringLiteral("%1/%2").arg(ticks->user).arg(ticks->nice) : u"-"_qs);
        add(static_cast<int>(machine.nextThermalState()));
    }
    return words.join(u' ');
}

} // namespace

class MachineFolderTest : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void descriptions()
    {
        compareTable(fixture(u"machinefolder/descriptions.txt"_qs),
                     [](const Cells &row) { return wordsOf(row[0]); });
    }

    void whatDescribesNoMachine()
    {
        const TemporaryMachine folder;
        QString problem;
        for (const QByteArray content : {"now: 5", "[]", "{\"now\": 5", ""}) {
            folder.writeFile(u"machine.json"_qs, content);
            QVERIFY(!makeFolderMachine({folder.folder()}, &problem));
            QVERIFY2(problem.contains(u"machine.json is no JSON object"_qs), qPrintable(problem));
        }
        QVERIFY(!makeFolderMachine({folder.home()}, &problem));
        QVERIFY2(problem.contains(u"home/machine.json cannot be read"_qs), qPrintable(problem));
    }

    void standInsKnowTheirMachine()
    {
        const TemporaryMachine folder({{u"now"_qs, 1'773'388'921.25}});
        folder.addTool(u"/usr/bin/loom"_qs, R"(echo "$MACHINE_DIR $MACHINE_NOW $1")");
        const auto machine = folder.open();
        machine->clock->advance(60);
        QCOMPARE(machine->shell->run("/usr/bin/loom", {"a \"b\" *"}),
                 (folder.folder() + u" 1773388981.25 a \"b\" *\n"_qs).toStdString());
        QCOMPARE(machine->shell->run("/usr/bin/weft", {}), std::nullopt);
        QCOMPARE(folder.events(u"run"_qs), (QJsonArray{QJsonArray{u"/usr/bin/loom"_qs, u"a \"b\" *"_qs}}));
    }

    void programsRunForWhomTrustsThem()
    {
        const TemporaryMachine folder;
        folder.addTool(u"/usr/bin/loom"_qs, "echo woven");
        QString problem;
        QStringList remarks;
        const auto machine = makeFolderMachine(
            {folder.folder(), false, [&](const QString &words) { remarks.append(words); }}, &problem);
        QCOMPARE(machine->shell->run("/usr/bin/weft", {}), std::nullopt);
        QVERIFY(remarks.isEmpty()); // there is none
        for (int time = 0; time < 2; ++time) {
            QVERIFY(!machine->shell->has("/usr/bin/loom"));
            QCOMPARE(machine->shell->run("/usr/bin/loom", {}), std::nullopt);
            QCOMPARE(remarks.size(), 1);
        }
        QCOMPARE(folder.runs(), QString());
    }

    void everythingLiesInTheFolder()
    {
        const TemporaryMachine folder;
        QString problem;
        const auto machine =
            makeFolderMachine({QDir::current().relativeFilePath(folder.home()) + u"/.."_qs}, &problem);
        QVERIFY2(machine != nullptr, qPrintable(problem));
        QCOMPARE(machine->places.home, folder.home());
        QVERIFY(!machine->clock->isFixed());
        QVERIFY(machine->settings->change(u"cpuRed"_qs, [](auto &) { return 70; }));
        QCOMPARE(QDir(folder.home() + u"/Library/Preferences"_qs).entryList(QDir::Files).size(), 1);
        machine->dock->setActivationPolicy(ActivationPolicy::accessory);
        QCOMPARE(folder.events(u"activationPolicy"_qs), QJsonArray{u"accessory"_qs});
    }

    void ownFilesLeadNowhere()
    {
        const QString data = u"home/Library/Application Support/Swabby"_qs;
        const QString preferences = u"home/Library/Preferences"_qs;
        for (const QString &place :
             {u"keychain.json"_qs, u"events.jsonl"_qs, u"opens-at-login"_qs, data + u"/history.json"_qs,
              data + u"/put-back.json"_qs, data, u"home/Library"_qs, preferences,
              preferences + u"/com.swabby.app.json"_qs}) {
            for (const bool isPipe : {false, true}) {
                const TemporaryMachine folder;
                const TemporaryMachine outside;
                outside.writeFile(u"file"_qs, "kept");
                const QString path = folder.folder() + u'/' + place;
                QVERIFY(QDir().mkpath(QFileInfo(path).path()));
                const QString target = outside.folder() + (place.contains(u'.') ? u"/file"_qs : QString());
                QVERIFY(isPipe ? ::mkfifo(qPrintable(path), 0600) == 0 : QFile::link(target, path));
                const QStringList before = QDir(outside.folder()).entryList();
                const auto machine = folder.open();
                machine->dock->setActivationPolicy(ActivationPolicy::regular);
                machine->secrets->write(u"secret"_qs, u"account"_qs);
                QVERIFY(place != u"keychain.json"_qs ||
                        !machine->secrets->read(u"account"_qs, Unlocking::never, {}).value);
                machine->login->registerAtLogin();
                const bool isData = place == u"home/Library"_qs || place.startsWith(data);
                const bool isSetting = place == u"home/Library"_qs || place.startsWith(preferences);
                QVERIFY(isPipe || machine->places.applicationData.isEmpty() == isData);
                QCOMPARE(machine->settings->change(u"cpuRed"_qs, [](auto &) { return 1; }), !isSetting);
                QVERIFY(isPipe || machine->settings->read(u"cpuRed"_qs).problem.isEmpty() != isSetting);
                QCOMPARE(QDir(outside.folder()).entryList(), before);
                QFile file(outside.folder() + u"/file"_qs);
                QVERIFY(file.open(QIODevice::ReadOnly) && file.readAll() == "kept");
            }
        }
    }

    void asksTheToolsAsAMacKnowsThem()
    {
        const TemporaryMachine folder;
        for (const QString &tool : {u"/bin/ps"_qs, u"/usr/bin/top"_qs, u"/usr/bin/nettop"_qs,
                                    u"/usr/sbin/sysctl"_qs, u"/usr/sbin/system_profiler"_qs})
            folder.addTool(tool, ":");
        const auto machine = folder.open();
        const auto survey = machine->processes->begin();
        QVERIFY(survey->busiest()->empty() && survey->largest()->empty()); // a listing, if of nothing
        QVERIFY(survey->matching({1}).empty() && survey->weights().empty());
        QVERIFY(survey->power().empty() && survey->network().empty());
        QVERIFY(!machine->power->healthAndCycles().cycles && !machine->boot->startEpoch(812));
        QVERIFY(!machine->boot->bootEpoch() && !machine->boot->bootEpoch()); // asked once
        QCOMPARE(folder.runs(), u"/bin/ps -Ao pid,ppid,pcpu,pmem,rss,comm -r\n"
                                "/bin/ps -Ao pid,ppid,pcpu,pmem,rss,comm -m\n"
                                "/bin/ps -Ao pid,ppid,pcpu,pmem,rss,comm\n"
                                "/bin/ps -Ao pcpu,rss,comm\n"
                                "/usr/bin/top -l 2 -s 1 -stats pid,command,power -n 300\n"
                                "/usr/bin/nettop -P -x -d -L 2 -s 1 -J bytes_in,bytes_out\n"
                                "/usr/sbin/system_profiler SPPowerDataType\n"
                                "/bin/ps -o lstart= -p 812\n"
                                "/usr/sbin/sysctl -n kern.boottime"_qs);
    }
};

QTEST_GUILESS_MAIN(MachineFolderTest)
#include "MachineFolderTest.moc"
