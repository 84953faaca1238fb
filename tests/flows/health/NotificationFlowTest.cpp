#include "flows/health/NotificationFlow.h"
#include "settings/Settings.h"
#include "support/LoopbackServer.h"
#include "support/Table.h"
#include "support/TemporaryMachine.h"

#include <QtCore/QSemaphore>
#include <QtTest/QSignalSpy>
#include <QtTest/QTest>

using namespace swabby;

namespace {

constexpr double noon = 1'790'000'000;
constexpr double week = 604'800;
constexpr double threeDays = 259'200;
const QString weekly = u"Your weekly Mac check-up: "_qs;

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

    /// What the last refresh posted, a line each.
    QString posted() const
    {
        const auto all = settled.last().first().value<QList<Notification>>();
        return all.isEmpty() ? u"nothing"_qs : lines(all, [](const Notification &notification) {
            return notification.title + u": "_qs + notification.body;
        });
    }
    /// What a refresh that many seconds later posts.
    QString refresh(double later = 0)
    {
        machine->clock->advance(later);
        const auto before = settled.count();
        state.refresh();
        waitUntil([&] { return settled.count() > before; });
        return posted();
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
        compareTable(fixture(u"flows/who_hears_of_red.txt"_qs), [this](const Cells &row) {
            Household house(m_server);
            house.folder.setProcesses({"10 1 33.99 1.0 100 /opt/<b>Mill &"});
            if (row[0].contains("pinned"))
                house.state.togglePin(u"<b>Mill &"_qs);
            house.set("notifyOnRed", !row[0].contains("unwanted"));
            house.refresh();
            house.state.snoozeUntil(house.machine->clock->now() + (row[0].contains("snoozed") ? 61 : 60));
            const QString told = house.refresh(60);
            const bool isRed = house.state.health() == HealthLevel::red;
            // Counted whether told or not, and only where it turned.
            const bool isQuiet = house.refresh() == u"nothing"_qs;
            const bool isCounted = house.settings.value(setting<"weeklyAttentionCount">) == 1;
            const bool isPosted = !house.folder.events(u"notification"_qs).isEmpty();
            return isRed && isQuiet && isCounted && isPosted == (told != u"nothing"_qs) ? told : u"wrong"_qs;
        });
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
        // The trouble and the bytes of the week, whether to tell of it, and what the model is asked to tell.
        compareTable(fixture(u"flows/a_week.txt"_qs), [](const Cells &row) {
            LoopbackServer server(always(httpAnswer(200, modelReply(u"What a week!"_qs))));
            Household house(server);
            const auto count = [&] { return house.settings.value(setting<"weeklyAttentionCount">); };
            const auto began = [&] { return house.settings.value(setting<"lastWeeklySummaryDate">); };
            house.state.snoozeUntil(noon + 2 * week); // snoozing is not for this one
            bool isRight = house.refresh() == u"nothing"_qs && began() == noon; // the first week begins
            house.set("weeklyAttentionCount", row.number(0));
            house.set("weeklyBytesFreed", row.number(1));
            isRight = isRight && house.refresh(week - 1) == u"nothing"_qs;
            isRight = isRight && count() == row.number(0) + 1; // it turned red, which counts like any other
            house.set("weeklyAttentionCount", row.number(0));
            house.set("notifyWeekly", row[2] != "unwanted");
            const QString told = house.refresh(1);
            isRight = isRight && began() == noon + week && count() == 0 &&
                      house.settings.value(setting<"weeklyBytesFreed">) == 0;
            const QList<HttpRequest> asked = server.requests();
            isRight = isRight && told == (asked.isEmpty() ? u"nothing"_qs : weekly + u"What a week!"_qs);
            const QString prompt = asked.size() == 1 ? asked.first().prompt() : u"nothing"_qs;
            return isRight ? prompt.section(u" needed"_qs, 0, 0) : u"wrong"_qs;
        });
    }

    void withoutAnAnswerThereIsASentence()
    {
        Household house(m_server);
        house.set("lastWeeklySummaryDate", noon - week);
        house.set("weeklyBytesFreed", 5);
        QCOMPARE(house.refresh(), weekly + u"Swabby kept an eye on your Mac this week."_qs);
        QVERIFY(!house.settings.value(setting<"lastStorageNotifyCheckDate">)); // there was no scan
    }

    void aDamagedDateBeginsANewWeek()
    {
        Household house(m_server, finding(5'000'000'000));
        house.set("lastWeeklySummaryDate", u"last Monday"_qs);
        house.set("lastStorageNotifyCheckDate", u"never"_qs);
        house.set("weeklyBytesFreed", 5);
        QVERIFY(house.refresh().startsWith(u"Your Mac could use a cleanup: "_qs));
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
        const QString posted = two.refresh();
        QVERIFY(waitUntil([&] { return one.settled.count() == 1; }));
        // One sentence and one reminder.
        for (const QString &title : {weekly, u"cleanup: "_qs})
            QCOMPARE((posted + one.posted()).count(title), 1);
        QCOMPARE(server.requests().size(), 1);
        QCOMPARE(shared.events(u"notification"_qs).size(), 2);
    }

    void whenAReminderComes()
    {
        // The seconds since the last check, and what the scan finds.
        compareTable(fixture(u"flows/when_a_reminder_comes.txt"_qs), [this](const Cells &row) {
            std::atomic<int> scans = 0;
            Clock *clock = nullptr;
            Household house(m_server, [&](const ScanControl &) -> std::optional<std::int64_t> {
                ++scans;
                clock->advance(100); // it takes its time
                if (row[2] == "cannot tell")
                    return std::nullopt;
                return static_cast<std::int64_t>(row.number(2));
            });
            clock = house.machine->clock.get();
            house.set("storageNotifyThresholdGB", 2.5);
            house.set("notifyOnStorage", !row[0].contains("unwanted"));
            if (!row[1].isEmpty())
                house.set("lastStorageNotifyCheckDate", noon - row.number(1));
            if (row[0].contains("snoozed"))
                house.state.snoozeUntil(noon + 1);
            const QString told = house.refresh().section(u": "_qs, -1).section(u" Open"_qs, 0, 0);
            const QString said = u"%1 scan: "_qs.arg(scans.load()) + told;
            if (scans == 0 || row[2] == "cannot tell")
                return said + (house.settings.value(setting<"lastStorageNotifyCheckDate">) == noon + 100
                                   ? u", noted"_qs
                                   : u""_qs);
            bool isRight = house.settings.value(setting<"lastStorageNotifyCheckDate">) == noon + 100;
            house.refresh(threeDays - 1);
            isRight = isRight && scans == 1;
            house.refresh(1);
            return isRight && scans == 2 ? said : u"wrong"_qs;
        });
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
