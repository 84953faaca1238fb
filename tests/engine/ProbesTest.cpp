#include "engine/Probes.h"
#include "support/Table.h"
#include "support/TemporaryMachine.h"

#include <QtCore/QJsonDocument>
#include <QtTest/QTest>

using namespace swabby;

namespace {

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
    void readings()
    {
        const std::map<QByteArray, QString (*)(Machine &)> probes = {
            {"processor", processor}, {"memory", memory}, {"battery", battery}};
        // The last ticks repeat, so nothing elapses after them.
        compareTable(fixture(u"engine/readings.txt"_qs), [&](const Cells &row) {
            const TemporaryMachine folder(QJsonDocument::fromJson(row[2]).object());
            return probes.at(row[1])(*folder.open());
        });
    }

    void healthBands()
    {
        QStringList words;
        for (const int percent : {69, 70, 79, 80, 89, 90})
            words.append(BatteryMonitor::healthBand(percent).section(u' ', 0, 0));
        QCOMPARE(words.join(u' '), u"Worn Fair Fair Good Good Excellent"_qs);
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
