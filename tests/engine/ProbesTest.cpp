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
            words.append(BatteryMonitor::healthBand(percent, {}).section(u' ', 0, 0));
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
        // Boot and start; 0 for one that is not known.
        compareTable(fixture(u"engine/start_after_boot.txt"_qs), [](const Cells &row) {
            const auto known = [](double time) { return time > 0 ? std::optional(time) : std::nullopt; };
            FakeBoot clock;
            clock.boot = known(row.number(0));
            clock.start = known(row.number(1));
            return figure(BootTime::delaySeconds(clock, 1));
        });
    }
};

QTEST_GUILESS_MAIN(ProbesTest)
#include "ProbesTest.moc"
