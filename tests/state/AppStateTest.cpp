#include "state/AppState.h"
#include "health/HistoryStore.h"
#include "platform/posix/FolderLock.h"
#include "settings/Settings.h"
#include "state/MenuBarTitle.h"
#include "support/Table.h"
#include "support/TemporaryMachine.h"

#include <QtCore/QJsonDocument>
#include <QtTest/QSignalSpy>
#include <QtTest/QTest>

using namespace swabby;

namespace {

constexpr double noon = 1'790'000'000;

QJsonObject busyAndCalm()
{
    // Each sample a hundred ticks on: first unknown, then busy, calm, busy, and calm from there.
    return QJsonDocument::fromJson(fixture(u"state/busy_and_calm.json"_qs)).object();
}

/// One refresh, applied.
void refreshOnce(AppState &state)
{
    const int before = state.refreshesApplied();
    state.refresh();
    QVERIFY(waitUntil([&] { return state.refreshesApplied() > before; }));
}

QByteArray row(int pid, double cpu, quint64 kibibytes, const char *command)
{
    return QByteArray::number(pid) + " 1 " + QByteArray::number(cpu) + " 1.0 " +
           QByteArray::number(kibibytes) + ' ' + command;
}

} // namespace

class AppStateTest : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void aRefreshPublishesWhatTheToolsSay()
    {
        QJsonObject facts = busyAndCalm();
        facts.insert(u"powerSource"_qs, QJsonObject{{u"Current Capacity"_qs, 84}, {u"Is Charging"_qs, true}});
        facts.insert(u"thermalState"_qs, u"fair"_qs);
        TemporaryMachine folder(facts);
        folder.setProcesses({row(10, 40.9, 1000, "/Applications/Mill.app/Contents/MacOS/Mill"),
                             row(11, 3, 90000, "/usr/bin/two words"),
                             row(12, 1, 10, "/opt/swabby/bin/helper"), row(13, 0, 10, "/usr/sbin/quiet")});
        folder.addTool(u"/usr/bin/top"_qs,
                       R"(printf 'PID COMMAND POWER\n10 Mill 0.0\nPID COMMAND POWER\n10 Mill 12.5
11 two words 20.0\n99 gone 80.0\n12 helper 9.0\n')");
        folder.addTool(u"/usr/bin/nettop"_qs,
                       R"(printf ',bytes_in,bytes_out,\nMill.10,1,1,\n,bytes_in,bytes_out,
Mill.10,300,20,\n')");
        AppState state(folder.open(), Record::everything);
        QSignalSpy changed(&state, &AppState::changed);
        refreshOnce(state);

        QCOMPARE(state.systemContextSummary(), QString::fromUtf8(fixture(u"state/context.txt"_qs)).trimmed());
        QCOMPARE(state.stats().memUsedBytes, 16384u * 200);
        QCOMPARE(state.stats().memPressurePercent, 25.0);
        QCOMPARE(state.stats().timestamp, noon);
        QCOMPARE(state.processes().first().energyImpact, 12.5);
        QCOMPARE(state.batteryDrainers().size(), 2);
        QCOMPARE(state.networkUsers().size(), 1);
        QCOMPARE(state.networkUsers().first().networkBytesPerSec, 320);
        QCOMPARE(state.history().size(), 1);
        QCOMPARE(state.history().first().mem, 50.0);
        QVERIFY(changed.count() > 0);
    }

    void changesAreSeenByOneMoreRefresh()
    {
        const TemporaryMachine folder;
        folder.addTool(u"/usr/bin/top"_qs, R"(mkdir "$MACHINE_DIR/hangs" && exec tail -f /dev/null)");
        AppState state(folder.open(), Record::nothing);
        QSignalSpy applied(&state, &AppState::applied);
        state.refresh(); // which nobody hears of again
        QVERIFY(waitUntil([&] { return QFile::exists(folder.folder() + u"/hangs"_qs); }));
        refreshOnce(state);
        applied.clear();
        const auto settles = [&](int refreshes) {
            return waitUntil([&] { return applied.size() == refreshes; });
        };
        state.refreshAnew(); // begins at once
        for (int change = 0; change < 3; ++change)
            state.refreshAnew(); // what runs may have looked before
        QVERIFY(settles(2));
        refreshOnce(state);
        QCOMPARE(applied.size(), 3);
    }

    void turningRedCountsOnceEachTime()
    {
        TemporaryMachine folder(busyAndCalm());
        folder.setProcesses({row(10, 20, 1000, "/usr/bin/mill")});
        const auto machine = folder.open();
        QList<int> inputs;
        {
            AppState state(machine, Record::everything);
            connect(&state, &AppState::turnedRed, this,
                    [&](const QList<ProcessSample> &input) { inputs.append(input.size()); });
            QList<HealthLevel> levels;
            for (int refresh = 0; refresh < 5; ++refresh) {
                refreshOnce(state);
                levels.append(state.health());
            }
            QCOMPARE(levels, QList<HealthLevel>({HealthLevel::green, HealthLevel::red, HealthLevel::green,
                                                 HealthLevel::red, HealthLevel::green}));
        }
        QCOMPARE(inputs, QList<int>({1, 1}));
        QCOMPARE(Settings(*machine->settings).value(setting<"weeklyAttentionCount">), 2);
    }

    void aPinnedProgramStaysListedAndRaisesNothing()
    {
        TemporaryMachine folder(QJsonObject{{u"now"_qs, noon}});
        folder.setProcesses({row(10, 95, 1000, "/usr/bin/mill")});
        const auto machine = folder.open();
        AppState state(machine, Record::everything);
        refreshOnce(state);
        QCOMPARE(state.health(), HealthLevel::red);
        // Pinned meanwhile by another program: that pin is kept.
        Settings(*machine->settings).setPinned(u"other"_qs, true);
        state.togglePin(u"mill"_qs);
        state.bookkeeping().wait();
        refreshOnce(state);
        QCOMPARE(state.health(), HealthLevel::green);
        QCOMPARE(state.processes().size(), 1);
        QCOMPARE(Settings(*machine->settings).value(setting<"pinnedProcessNames">),
                 QStringList({u"mill"_qs, u"other"_qs}));
        state.togglePin(u"mill"_qs);
        QCOMPARE(state.pinnedNames(), std::set<QString>{u"other"_qs});
    }

    void aPinIsShownBeforeItIsStored()
    {
        TemporaryMachine folder(QJsonObject{{u"now"_qs, noon}});
        const auto machine = folder.open();
        const QString preferences = machine->places.preferences;
        QVERIFY(QDir().mkpath(preferences));
        AppState state(machine, Record::nothing);
        const std::set<QString> other = {u"other"_qs};
        auto lock = FolderLock::lock(preferences); // another program is at it
        for (const auto &name : {u"mill"_qs, u"other"_qs, u"mill"_qs})
            state.togglePin(name);
        QCOMPARE(state.pinnedNames(), other);
        lock.reset();
        state.bookkeeping().wait();
        QCOMPARE(Settings(*machine->settings).value(setting<"pinnedProcessNames">), QStringList(u"other"_qs));

        QCoreApplication::processEvents();
        QVERIFY(QDir().rename(preferences, preferences + u".moved"_qs));
        folder.writeFile(u"home/Library/Preferences"_qs, "in the way");
        const QSignalSpy notStored(&state, &AppState::pinNotStored);
        state.togglePin(u"mill"_qs);
        QCOMPARE(state.pinnedNames(), std::set<QString>{u"mill"_qs});
        QVERIFY(waitUntil([&] { return state.pinnedNames().empty(); })); // what could not be stored is not so
        QCOMPARE(notStored.size(), 1);
    }

    void historyOlderThanADayGoes()
    {
        TemporaryMachine folder(busyAndCalm());
        const auto machine = folder.open();
        const QString data = machine->places.applicationData;
        HistoryStore::save(data, {{noon - 86'400, 1, 1}, {noon - 86'399, 2, 2}, {noon - 60, 3, 3}}, noon);
        {
            AppState state(machine, Record::everything);
            QCOMPARE(state.history().size(), 3);
            machine->clock->advance(1);
            refreshOnce(state);
            QCOMPARE(state.history().size(), 3);
            QCOMPARE(state.history().first().cpu, 2.0);
        }
        QCOMPARE(HistoryStore::load(data, noon).size(), 3);
    }

    void theSlowReportRunsAtMostEveryFiveMinutes()
    {
        TemporaryMachine folder(
            QJsonObject{{u"now"_qs, noon}, {u"powerSource"_qs, QJsonObject{{u"Current Capacity"_qs, 80}}}});
        folder.addTool(u"/usr/sbin/system_profiler"_qs,
                       "echo '  Cycle Count: 312'; echo ' Maximum Capacity: 87%'");
        const auto machine = folder.open();
        AppState state(machine, Record::nothing);
        for (const double step : {0.0, 60.0, 239.9, 0.1}) {
            machine->clock->advance(step);
            refreshOnce(state);
            QCOMPARE(state.stats().batteryCycleCount, 312);
            QCOMPARE(state.stats().batteryHealthPercent, 87);
        }
        const auto reports = [&] {
            int count = 0;
            for (const QJsonValue &run : folder.events(u"run"_qs))
                count += run.toArray().first() == u"/usr/sbin/system_profiler"_qs;
            return count;
        };
        QCOMPARE(reports(), 2);
    }

    void aProgramThatEndedIsNoSuspect()
    {
        TemporaryMachine folder(QJsonObject{{u"now"_qs, noon}});
        folder.setProcesses({row(10, 1, 100'000, "/usr/bin/mill"), row(11, 1, 100'000, "/usr/bin/loom")});
        const auto machine = folder.open();
        AppState state(machine, Record::nothing);
        refreshOnce(state);
        machine->clock->advance(900);
        folder.setProcesses({row(10, 1, 200'000, "/usr/bin/mill"), row(11, 1, 200'000, "/usr/bin/loom")});
        refreshOnce(state);
        QCOMPARE(state.leakSuspects().size(), 2);
        state.removeProcess(10);
        QCOMPARE(state.leakSuspects().size(), 1);
        QCOMPARE(state.leakSuspects().first().pid, 11);
        QCOMPARE(state.processes().size(), 1);
    }

    void aHungReportCostsOneRefresh()
    {
        TemporaryMachine folder(
            QJsonObject{{u"now"_qs, noon}, {u"powerSource"_qs, QJsonObject{{u"Current Capacity"_qs, 80}}}});
        folder.addTool(u"/usr/sbin/system_profiler"_qs, ": >\"$MACHINE_DIR/hangs\"; exec sleep 600");
        AppState state(folder.open(), Record::nothing);
        state.refresh();
        QVERIFY(waitUntil([&] { return QFile::exists(folder.folder() + u"/hangs"_qs); }));
        for (int refresh = 0; refresh < 3; ++refresh)
            refreshOnce(state);
        QCOMPARE(state.refreshesApplied(), 3);
    }

    void hungToolsStopTheCrowdNotTheProgram()
    {
        TemporaryMachine folder(QJsonObject{{u"now"_qs, noon}});
        folder.addTool(u"/bin/ps"_qs, "echo >>\"$MACHINE_DIR/started\"; exec sleep 600");
        QElapsedTimer elapsed;
        {
            AppState state(folder.open(), Record::nothing);
            for (int refresh = 0; refresh < 80; ++refresh)
                state.refresh();
            QFile started(folder.folder() + u"/started"_qs);
            QVERIFY(waitUntil([&] { return started.size() == 64; }));
            elapsed.start();
        }
        // Ending does not wait for what never ends.
        QVERIFY(elapsed.elapsed() < 30'000);
        QCOMPARE(folder.events(u"run"_qs).size(), 64);
    }

    void overlappingRefreshesAllApply()
    {
        TemporaryMachine folder(busyAndCalm());
        folder.setProcesses({row(10, 20, 1000, "/usr/bin/mill")});
        AppState state(folder.open(), Record::everything);
        for (int refresh = 0; refresh < 40; ++refresh)
            state.refresh();
        QVERIFY(waitUntil([&] { return state.refreshesApplied() == 40; }));
        QCOMPARE(state.history().size(), 40);
    }

    void menuBarColourGoesByTheExactLoad()
    {
        // Load and health.
        compareTable(fixture(u"state/menu_bar_title.txt"_qs), [](const Cells &row) {
            const QStringList levels = {u"green"_qs, u"yellow"_qs, u"red"_qs};
            const MenuBarTitle title = menuBarTitle(row.number(0), HealthLevel(levels.indexOf(row.text(1))));
            return title.text + u' ' + levels[int(title.color)];
        });
    }
};

QTEST_GUILESS_MAIN(AppStateTest)
#include "AppStateTest.moc"
