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
class Household {
public:
    explicit Household(const LoopbackServer &server, StorageTotal scan = {},
                       TemporaryMachine *shared = nullptr)
        : m_machine((shared ? *shared : m_own).open()),
          state(m_machine, Record::everything),
          settings(*m_machine->settings),
          m_ai(m_machine, {.direct = {}, .proxy = server.url()}),
          flow(state, m_ai, std::move(scan)),
          m_settled(&flow, &NotificationFlow::settled)
    {
    }

    /// What a refresh that many seconds later posts.
    QList<Notification> refresh(double later = 0)
    {
        m_machine->clock->advance(later);
        const auto before = m_settled.count();
        state.refresh();
        waitUntil([&] { return m_settled.count() > before; });
        return m_settled.last().first().value<QList<Notification>>();
    }
    void set(const char *key, const QJsonValue &value)
    {
        settings.store(*Settings::find(QLatin1String(key)), value);
    }
    double now() const { return m_machine->clock->now(); }

private:
    TemporaryMachine m_own = TemporaryMachine(busyAndCalm());
    std::shared_ptr<Machine> m_machine;

public:
    AppState state;
    Settings settings;

private:
    CloudAI m_ai;

public:
    NotificationFlow flow;
    TemporaryMachine &folder() { return m_own; }

private:
    QSignalSpy m_settled;
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

    void whoHearsOfRed_data()
    {
        QTest::addColumn<bool>("isWanted");
        QTest::addColumn<double>("snoozed"); // seconds from the red refresh
        QTest::addColumn<bool>("isPinned");
        QTest::addColumn<bool>("isTold");
        QTest::newRow("as it is") << true << 0.0 << false << true;
        QTest::newRow("switched off") << false << 0.0 << false << false;
        QTest::newRow("snoozed") << true << 1.0 << false << false;
        QTest::newRow("snoozed until just now") << true << 0.0 << false << true;
        QTest::newRow("nobody to blame") << true << 0.0 << true << false;
    }

    void whoHearsOfRed()
    {
        QFETCH(bool, isWanted);
        QFETCH(double, snoozed);
        QFETCH(bool, isPinned);
        QFETCH(bool, isTold);
        Household house(m_server);
        house.folder().setProcesses({"10 1 33.99 1.0 100 /opt/<b>Mill &"});
        if (isPinned)
            house.state.togglePin(u"<b>Mill &"_qs);
        house.set("notifyOnRed", isWanted);
        house.refresh();
        house.state.snoozeUntil(house.now() + 60 + snoozed);
        const auto posted = house.refresh(60);
        QCOMPARE(house.state.health(), HealthLevel::red);
        const Notification told = {redTitle, u"<b>Mill & is using 33% of your Mac's power right now."_qs};
        QCOMPARE(posted, isTold ? QList<Notification>({told}) : QList<Notification>());
        QCOMPARE(house.folder().events(u"notification"_qs).size(), posted.size());
        // Counted whether told or not, and only where it turned.
        QCOMPARE(house.refresh().size(), 0);
        QCOMPARE(house.settings.value(setting<"weeklyAttentionCount">), 1);
    }

    void aWeekIsToldOf_data()
    {
        QTest::addColumn<int>("attention");
        QTest::addColumn<double>("freed");
        QTest::addColumn<QString>("asked"); // null: nothing is
        QTest::newRow("nothing") << 0 << 0.0 << QString();
        QTest::newRow("one") << 1 << 0.0
                             << u"Swabby didn't free up any storage space and caught 1 thing that"_qs;
        QTest::newRow("two") << 2 << 0.0
                             << u"Swabby didn't free up any storage space and caught 2 things that"_qs;
        QTest::newRow("freed") << 0 << 1.2e9
                               << u"Swabby freed up 1.2 GB of storage and caught 0 things that"_qs;
        QTest::newRow("a byte") << 0 << 1.0
                                << u"Swabby freed up 1 byte of storage and caught 0 things that"_qs;
    }

    void aWeekIsToldOf()
    {
        QFETCH(int, attention);
        QFETCH(double, freed);
        QFETCH(QString, asked);
        LoopbackServer server(always(httpAnswer(200, modelReply(u"What a week!"_qs))));
        Household house(server);
        house.state.snoozeUntil(noon + 2 * week); // snoozing is not for this one
        QCOMPARE(house.refresh().size(), 0);      // the first week begins
        QCOMPARE(house.settings.value(setting<"lastWeeklySummaryDate">), noon);
        house.set("weeklyAttentionCount", attention);
        house.set("weeklyBytesFreed", freed);
        QCOMPARE(house.refresh(week - 1).size(), 0);
        // That refresh turned red, which counts like any other.
        QCOMPARE(house.settings.value(setting<"weeklyAttentionCount">), attention + 1);
        house.set("weeklyAttentionCount", attention);
        const auto posted = house.refresh(1);
        QCOMPARE(posted, asked.isNull() ? QList<Notification>()
                                        : QList<Notification>({{weeklyTitle, u"What a week!"_qs}}));
        QCOMPARE(server.requests().size(), asked.isNull() ? 0 : 1);
        if (!asked.isNull())
            QVERIFY(server.requests().first().prompt().startsWith(u"This week, "_qs + asked));
        QCOMPARE(house.settings.value(setting<"lastWeeklySummaryDate">), noon + week);
        QCOMPARE(house.settings.value(setting<"weeklyAttentionCount">), 0);
        QCOMPARE(house.settings.value(setting<"weeklyBytesFreed">), 0);
    }

    void withoutAnAnswerThereIsASentence()
    {
        LoopbackServer server(always(httpAnswer(500, {})));
        Household house(server);
        house.set("lastWeeklySummaryDate", noon - week);
        house.set("weeklyBytesFreed", 5);
        QCOMPARE(house.refresh(),
                 QList<Notification>({{weeklyTitle, u"Swabby kept an eye on your Mac this week."_qs}}));
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
        QSignalSpy settled(&one.flow, &NotificationFlow::settled);
        one.state.refresh();
        const auto posted = two.refresh();
        QVERIFY(waitUntil([&] { return settled.count() == 1; }));
        QCOMPARE((posted + settled.first().first().value<QList<Notification>>()).size(),
                 2); // one sentence and one reminder
        QCOMPARE(server.requests().size(), 1);
        QCOMPARE(shared.events(u"notification"_qs).size(), 2);
    }

    void whenAReminderComes_data()
    {
        QTest::addColumn<double>("since"); // the last check; negative: never
        QTest::addColumn<bool>("isWanted");
        QTest::addColumn<bool>("isSnoozed");
        QTest::addColumn<qint64>("found");
        QTest::addColumn<bool>("isScanned");
        QTest::addColumn<QString>("size"); // null: not told
        constexpr qint64 plenty = 4'200'000'000;
        QTest::newRow("never before") << -1.0 << true << false << plenty << true << u"4.2 GB"_qs;
        QTest::newRow("three days") << threeDays << true << false << plenty << true << u"4.2 GB"_qs;
        QTest::newRow("a second less") << threeDays - 1 << true << false << plenty << false << QString();
        QTest::newRow("switched off") << -1.0 << false << false << plenty << false << QString();
        QTest::newRow("snoozed") << -1.0 << true << true << plenty << false << QString();
        QTest::newRow("just enough") << -1.0 << true << false << qint64(2'500'000'000) << true
                                     << u"2.5 GB"_qs;
        QTest::newRow("a byte less") << -1.0 << true << false << qint64(2'499'999'999) << true << QString();
    }

    void whenAReminderComes()
    {
        QFETCH(double, since);
        QFETCH(bool, isWanted);
        QFETCH(bool, isSnoozed);
        QFETCH(qint64, found);
        QFETCH(bool, isScanned);
        QFETCH(QString, size);
        std::atomic<int> scans = 0;
        Clock *clock = nullptr;
        Household house(m_server, [&](const ScanControl &) {
            ++scans;
            clock->advance(100); // it takes its time
            return found;
        });
        clock = house.state.machine().clock.get();
        house.set("storageNotifyThresholdGB", 2.5);
        house.set("notifyOnStorage", isWanted);
        if (since >= 0)
            house.set("lastStorageNotifyCheckDate", noon - since);
        if (isSnoozed)
            house.state.snoozeUntil(noon + 1);
        const QList<Notification> expected = {{u"Your Mac could use a cleanup"_qs,
                                               u"You could free up about "_qs + size +
                                                   u" of space. Open Swabby's Storage tab to clean up."_qs}};
        QCOMPARE(house.refresh(), size.isNull() ? QList<Notification>() : expected);
        QCOMPARE(scans, isScanned ? 1 : 0);
        if (isScanned) {
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
            QSignalSpy settled(&house.flow, &NotificationFlow::settled);
            house.state.refresh();
            QVERIFY(waitUntil([&] { return begun.tryAcquire(); }));
            house.refresh(); // settles while the first one still waits for its scan
            QCOMPARE(settled.count(), 1);
        }
        QCoreApplication::processEvents();
        QCOMPARE(scans, 1);
        QCOMPARE(shared.events(u"notification"_qs).size(), 0);
        QVERIFY(!Settings(*shared.open()->settings).value(setting<"lastStorageNotifyCheckDate">));
    }

    void withoutAScanNoDateIsNoted()
    {
        Household house(m_server);
        house.refresh();
        QVERIFY(!house.settings.value(setting<"lastStorageNotifyCheckDate">));
    }

private:
    LoopbackServer m_server{always(httpAnswer(500, {}))};
};

QTEST_GUILESS_MAIN(NotificationFlowTest)
#include "NotificationFlowTest.moc"
