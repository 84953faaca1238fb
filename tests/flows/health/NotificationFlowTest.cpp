#include "flows/health/NotificationFlow.h"
#include "settings/Settings.h"
#include "support/LoopbackServer.h"
#include "support/TemporaryMachine.h"

#include <QtCore/QSemaphore>
#include <QtTest/QSignalSpy>
#include <QtTest/QTest>

using namespace swabby;

namespace {

constexpr double noon = 1'790'000'000;
constexpr double week = 604'800;
constexpr double threeDays = 259'200;
const QString weeklyTitle = u"Your weekly Mac check-up"_qs;
const QString redTitle = u"Your Mac could use some attention"_qs;

QJsonObject busyAndCalm()
{
    // First unknown, then busy, calm, busy, and calm from there.
    return {{u"now"_qs, noon},
            {u"cpuTicks"_qs,
             QJsonArray{QJsonArray{0, 0, 0, 0}, QJsonArray{90, 5, 5, 0}, QJsonArray{95, 5, 100, 0},
                        QJsonArray{190, 5, 105, 0}, QJsonArray{191, 5, 204, 0}}}};
}

/// A machine on which Swabby runs without windows, with an assistant that answers the same to everything.
struct Household {
    explicit Household(const LoopbackServer &server, StorageTotal scan = {},
                       TemporaryMachine *shared = nullptr)
        : folder(shared ? *shared : own),
          machine(folder.open()),
          state(machine, Record::everything),
          settings(*machine->settings),
          ai(machine, {.direct = {}, .proxy = server.url()}),
          flow(state, ai, std::move(scan)),
          settled(&flow, &NotificationFlow::settled)
    {
    }

    /// What a refresh that many seconds later posts.
    QList<Notification> refresh(double later = 0)
    {
        machine->clock->advance(later);
        const auto before = settled.count();
        state.refresh();
        waitUntil([&] { return settled.count() > before; });
        return settled.last().first().value<QList<Notification>>();
    }
    void set(const char *key, const QJsonValue &value)
    {
        settings.store(*Settings::find(QLatin1String(key)), value);
    }

    TemporaryMachine own = TemporaryMachine(busyAndCalm());
    TemporaryMachine &folder;
    std::shared_ptr<Machine> machine;
    AppState state;
    Settings settings;
    CloudAI ai;
    NotificationFlow flow;
    QSignalSpy settled;
};

StorageTotal finding(std::int64_t bytes)
{
    return [bytes](const ScanControl &) { return bytes; };
}

} // namespace

class NotificationFlowTest : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void init() { qunsetenv("ANTHROPIC_API_KEY"); }

    void whoHearsOfRed()
    {
        struct Row {
            bool isWanted;
            double snoozed; // seconds from the red refresh
            bool isPinned, isTold;
        };
        for (const Row &row : {Row{true, 0, false, true}, Row{false, 0, false, false},
                               Row{true, 1, false, false}, Row{true, 0, true, false}}) {
            Household house(m_server);
            house.folder.setProcesses({"10 1 33.99 1.0 100 /opt/<b>Mill &"});
            if (row.isPinned)
                house.state.togglePin(u"<b>Mill &"_qs);
            house.set("notifyOnRed", row.isWanted);
            house.refresh();
            house.state.snoozeUntil(house.machine->clock->now() + 60 + row.snoozed);
            const auto posted = house.refresh(60);
            QCOMPARE(house.state.health(), HealthLevel::red);
            const Notification told = {redTitle, u"<b>Mill & is using 33% of your Mac's power right now."_qs};
            QCOMPARE(posted, row.isTold ? QList<Notification>({told}) : QList<Notification>());
            QCOMPARE(house.folder.events(u"notification"_qs).size(), posted.size());
            // Counted whether told or not, and only where it turned.
            QCOMPARE(house.refresh().size(), 0);
            QCOMPARE(house.settings.value(setting<"weeklyAttentionCount">), 1);
        }
    }

    void aClickLeadsToItsSection()
    {
        class Clicked final : public Notifier {
            void post(const Notification &, std::function<void()> opened) override { opened(); }
        };
        Household house(m_server, finding(5'000'000'000));
        house.machine->notifier = std::make_unique<Clicked>();
        QList<MainSection> led;
        connect(&house.flow, &NotificationFlow::opened, this, [&](MainSection section) { led += section; });
        house.folder.setProcesses({"10 1 90 1.0 100 /opt/Mill"});
        house.set("lastWeeklySummaryDate", noon - week);
        house.set("weeklyBytesFreed", 5);
        house.refresh();
        house.refresh();
        std::sort(led.begin(), led.end());
        QCOMPARE(led, (QList{MainSection::overview, MainSection::speed, MainSection::storage}));
    }

    void aWeekIsToldOf()
    {
        struct Row {
            int attention;
            double freed;
            QString asked; // empty: nothing is
        };
        for (const Row &row :
             {Row{0, 0, {}}, Row{1, 0, u"Swabby didn't free up any storage space and caught 1 thing that"_qs},
              Row{2, 0, u"Swabby didn't free up any storage space and caught 2 things that"_qs},
              Row{0, 1.2e9, u"Swabby freed up 1.2 GB of storage and caught 0 things that"_qs},
              Row{0, 1, u"Swabby freed up 1 byte of storage and caught 0 things that"_qs}}) {
            LoopbackServer server(always(httpAnswer(200, modelReply(u"What a week!"_qs))));
            Household house(server);
            house.state.snoozeUntil(noon + 2 * week); // snoozing is not for this one
            QCOMPARE(house.refresh().size(), 0);      // the first week begins
            QCOMPARE(house.settings.value(setting<"lastWeeklySummaryDate">), noon);
            house.set("weeklyAttentionCount", row.attention);
            house.set("weeklyBytesFreed", row.freed);
            QCOMPARE(house.refresh(week - 1).size(), 0);
            // That refresh turned red, which counts like any other.
            QCOMPARE(house.settings.value(setting<"weeklyAttentionCount">), row.attention + 1);
            house.set("weeklyAttentionCount", row.attention);
            const auto posted = house.refresh(1);
            QCOMPARE(posted, row.asked.isEmpty() ? QList<Notification>()
                                                 : QList<Notification>({{weeklyTitle, u"What a week!"_qs}}));
            QCOMPARE(server.requests().size(), posted.size());
            if (!row.asked.isEmpty())
                QVERIFY(server.requests().first().prompt().startsWith(u"This week, "_qs + row.asked));
            QCOMPARE(house.settings.value(setting<"lastWeeklySummaryDate">), noon + week);
            QCOMPARE(house.settings.value(setting<"weeklyAttentionCount">), 0);
            QCOMPARE(house.settings.value(setting<"weeklyBytesFreed">), 0);
        }
    }

    void withoutAnAnswerThereIsASentence()
    {
        Household house(m_server);
        house.set("lastWeeklySummaryDate", noon - week);
        house.set("weeklyBytesFreed", 5);
        QCOMPARE(house.refresh(),
                 QList<Notification>({{weeklyTitle, u"Swabby kept an eye on your Mac this week."_qs}}));
        QVERIFY(!house.settings.value(setting<"lastStorageNotifyCheckDate">)); // there was no scan
    }

    void aDamagedDateBeginsANewWeek()
    {
        Household house(m_server, finding(5'000'000'000));
        house.set("lastWeeklySummaryDate", u"last Monday"_qs);
        house.set("lastStorageNotifyCheckDate", u"never"_qs);
        house.set("weeklyBytesFreed", 5);
        QCOMPARE(house.refresh().size(), 1); // the reminder
        QCOMPARE(house.settings.value(setting<"lastWeeklySummaryDate">), noon);
        QCOMPARE(house.settings.value(setting<"lastStorageNotifyCheckDate">), noon);
        QCOMPARE(house.settings.value(setting<"weeklyBytesFreed">), 5);
    }

    void ofTwoProgramsOneTells()
    {
        TemporaryMachine shared(QJsonObject{{u"now"_qs, noon}});
        LoopbackServer server(always(httpAnswer(200, modelReply(u"What a week!"_qs))));
        Household one(server, finding(5'000'000'000), &shared);
        Household two(server, finding(5'000'000'000), &shared);
        one.set("lastWeeklySummaryDate", noon - week);
        one.set("weeklyBytesFreed", 5);
        one.state.refresh();
        const auto posted = two.refresh();
        QVERIFY(waitUntil([&] { return one.settled.count() == 1; }));
        QCOMPARE((posted + one.settled.first().first().value<QList<Notification>>()).size(),
                 2); // one sentence and one reminder
        QCOMPARE(server.requests().size(), 1);
        QCOMPARE(shared.events(u"notification"_qs).size(), 2);
    }

    void whenAReminderComes()
    {
        struct Row {
            double since; // the last check; negative: never
            bool isWanted, isSnoozed;
            qint64 found;
            bool isScanned;
            QString size = {}; // empty: not told
        };
        constexpr qint64 plenty = 4'200'000'000;
        for (const Row &row :
             {Row{-1, true, false, plenty, true, u"4.2 GB"_qs},
              Row{threeDays, true, false, plenty, true, u"4.2 GB"_qs},
              Row{threeDays - 1, true, false, plenty, false}, Row{-1, false, false, plenty, false},
              Row{-1, true, true, plenty, false}, Row{-1, true, false, 2'500'000'000, true, u"2.5 GB"_qs},
              Row{-1, true, false, 2'499'999'999, true}}) {
            std::atomic<int> scans = 0;
            Clock *clock = nullptr;
            Household house(m_server, [&](const ScanControl &) {
                ++scans;
                clock->advance(100); // it takes its time
                return row.found;
            });
            clock = house.machine->clock.get();
            house.set("storageNotifyThresholdGB", 2.5);
            house.set("notifyOnStorage", row.isWanted);
            if (row.since >= 0)
                house.set("lastStorageNotifyCheckDate", noon - row.since);
            if (row.isSnoozed)
                house.state.snoozeUntil(noon + 1);
            const Notification reminder = {u"Your Mac could use a cleanup"_qs,
                                           u"You could free up about "_qs + row.size +
                                               u" of space. Open Swabby's Storage tab to clean up."_qs};
            QCOMPARE(house.refresh(),
                     row.size.isEmpty() ? QList<Notification>() : QList<Notification>{reminder});
            QCOMPARE(scans, row.isScanned ? 1 : 0);
            if (!row.isScanned)
                continue;
            QCOMPARE(house.settings.value(setting<"lastStorageNotifyCheckDate">), noon + 100);
            house.refresh(threeDays - 1);
            QCOMPARE(scans, 1);
            house.refresh(1);
            QCOMPARE(scans, 2);
        }
    }

    void oneScanAtATimeWhichEndsWithTheProgram()
    {
        QSemaphore begun;
        std::atomic<int> scans = 0;
        TemporaryMachine shared(QJsonObject{{u"now"_qs, noon}});
        {
            Household house(
                m_server,
                [&](const ScanControl &control) {
                    ++scans;
                    begun.release();
                    while (!control.stop.stopRequested())
                        QThread::yieldCurrentThread();
                    return std::int64_t{9'000'000'000};
                },
                &shared);
            house.state.refresh();
            QVERIFY(waitUntil([&] { return begun.tryAcquire(); }));
            house.refresh(); // settles while the first one still waits for its scan
            QCOMPARE(house.settled.count(), 1);
        }
        QCoreApplication::processEvents();
        QCOMPARE(scans, 1);
        QCOMPARE(shared.events(u"notification"_qs).size(), 0);
        QVERIFY(!Settings(*shared.open()->settings).value(setting<"lastStorageNotifyCheckDate">));
    }

private:
    LoopbackServer m_server{always(httpAnswer(500, {}))};
};

QTEST_GUILESS_MAIN(NotificationFlowTest)
#include "NotificationFlowTest.moc"
