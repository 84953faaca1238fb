#include "engine/Probes.h"
#include "support/TemporaryMachine.h"

#include <QtCore/QJsonDocument>
#include <QtTest/QTest>

using namespace swabby;

namespace {

using Probe = QString (*)(Machine &);

QString figure(std::optional<int> value)
{
    return value ? QString::number(*value) : u"-"_qs;
}

QString processor(Machine &machine)
{
    CPUMonitor monitor;
    QStringList loads;
    for (int i = 0; i < 4; ++i)
        loads.append(QString::number(monitor.sample(*machine.kernel)));
    return loads.join(u' ');
}

QString memory(Machine &machine)
{
    const auto figures = MemoryMonitor::sample(*machine.kernel, machine.kernel->physicalMemory());
    return QStringLiteral("%1 %2 %3")
        .arg(figures.usedBytes)
        .arg(figures.pressurePercent)
        .arg(figures.swapUsed);
}

QString battery(Machine &machine)
{
    const BatteryMonitor::Charge charge = BatteryMonitor::sample(*machine.power);
    return figure(charge.percent) + (charge.charging ? u" + "_qs : u" - "_qs) +
           figure(charge.minutesRemaining);
}

} // namespace

class ProbesTest : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void readings_data()
    {
        QTest::addColumn<Probe>("probe");
        QTest::addColumn<QByteArray>("facts");
        QTest::addColumn<QString>("reading");
        const auto row = [](const char *name, Probe probe, const char *facts, const char *reading) {
            QTest::newRow(name) << probe << QByteArray(facts) << QString::fromLatin1(reading);
        };
        // The last ticks repeat, so nothing elapses after them.
        row("user, system and nice are work", processor, R"({"cpuTicks":[[9,9,9,9],[19,29,69,19]]})",
            "0 40 0 0");
        row("all idle, then all busy", processor, R"({"cpuTicks":[[0,0,0,0],[0,0,9,0],[5,0,9,5]]})",
            "0 0 100 0");
        row("idle went backwards", processor, R"({"cpuTicks":[[0,0,100,0],[50,0,90,0]]})", "0 100 0 0");
        row("work went backwards", processor, R"({"cpuTicks":[[100,0,0,0],[90,0,50,0]]})", "0 0 0 0");
        row("32 bits wrapped", processor, R"({"cpuTicks":[[4294967290,0,0,0],[10,0,100,0]]})", "0 0 0 0");
        row("failed readings", processor, R"({"cpuTicks":[0,[0,0,0,0],"lost",[30,0,70,0]]})", "0 0 0 30");
        row("pages", memory, R"({"memory":{"pageSize":10,"activePages":4,"wiredPages":2,"compressorPages":3,
            "physicalBytes":200,"swapUsedBytes":77}})",
            "90 25 77");
        row("total unknown", memory,
            R"({"memory":{"pageSize":10,"activePages":4,"wiredPages":2,"swapUsedBytes":77}})", "60 0 77");
        row("no pages", memory, "{}", "0 0 0");
        row("no battery", battery, "{}", "- - -");
        row("a source that says nothing", battery, R"({"powerSource":{}})", "- - -");
        row("discharging", battery, R"({"powerSource":{"Current Capacity":40,"Is Charging":false,
            "Time to Empty":95,"Time to Full Charge":45}})",
            "40 - 95");
        row("charging", battery, R"({"powerSource":{"Current Capacity":40,"Is Charging":true,
            "Time to Empty":95,"Time to Full Charge":45}})",
            "40 + 45");
        row("time to full missing", battery, R"({"powerSource":{"Is Charging":true,"Time to Empty":95}})",
            "- + -");
        row("estimating", battery, R"({"powerSource":{"Current Capacity":4,"Time to Empty":-1}})", "4 - -");
        row("no minutes", battery, R"({"powerSource":{"Is Charging":true,"Time to Full Charge":0}})",
            "- + -");
        row("one minute", battery, R"({"powerSource":{"Current Capacity":0,"Time to Empty":1}})", "0 - 1");
    }

    void readings()
    {
        QFETCH(Probe, probe);
        QFETCH(QByteArray, facts);
        const auto machine = TemporaryMachine(QJsonDocument::fromJson(facts).object()).open();
        QTEST(probe(*machine), "reading");
    }

    void healthBands()
    {
        QStringList words;
        for (const int percent : {69, 70, 79, 80, 89, 90})
            words.append(BatteryMonitor::healthBand(percent));
        const QString worn = u"Worn — Apple recommends having this battery checked out or replaced."_qs;
        const QString fair = u"Fair — you'll likely notice shorter battery life than when it was new."_qs;
        const QString good = u"Good — this battery still holds a solid charge."_qs;
        const QString excellent = u"Excellent — this battery is basically like new."_qs;
        QCOMPARE(words, QStringList({worn, fair, fair, good, good, excellent}));
    }

    void startAfterBoot()
    {
        struct FakeBoot final : BootClock {
            std::optional<double> boot;
            std::optional<double> start;
            std::optional<double> bootEpoch() override { return boot; }
            std::optional<double> startEpoch(std::int32_t) override { return start; }
        };
        const auto delay = [](std::optional<double> boot, std::optional<double> start) {
            FakeBoot clock;
            clock.boot = boot;
            clock.start = start;
            return figure(BootTime::delaySeconds(clock, 1));
        };
        QCOMPARE(delay(1000, 1000), u"0"_qs);
        QCOMPARE(delay(1000, 1599.9), u"599"_qs);
        QCOMPARE(delay(1000, 1600), u"-"_qs);
        QCOMPARE(delay(1000, 999.9), u"-"_qs);
        QCOMPARE(delay({}, 1000), u"-"_qs);
        QCOMPARE(delay(1000, {}), u"-"_qs);
    }
};

QTEST_GUILESS_MAIN(ProbesTest)
#include "ProbesTest.moc"
