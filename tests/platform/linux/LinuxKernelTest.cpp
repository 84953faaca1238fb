#include "StandIn.h"
#include "platform/linux/LinuxBootClock.h"
#include "platform/linux/LinuxKernelCounters.h"
#include "platform/linux/LinuxPowerSupply.h"
#include "platform/linux/ThermalZones.h"

#include <QtTest/QTest>

#include <unistd.h>

#include <cmath>
#include <ctime>

using namespace swabby;

namespace {

void writeAll(const StandIn &folder, const QStringList &files)
{
    for (const QString &file : files) {
        const qsizetype equals = file.indexOf(u'=');
        folder.write(file.left(equals).toStdString(), file.mid(equals + 1).toStdString() + '\n');
    }
}

LinuxKernelCounters counters(const StandIn &machine)
{
    return LinuxKernelCounters({machine.path("proc"), machine.path("sys"), machine.path("nowhere")});
}

} // namespace

class LinuxKernelTest : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void processorTime_data();
    void processorTime();
    void memory_data();
    void memory();
    void compressedSwapDevicesAreAddedUp();
    void nothingToReadIsNeutral();
    void thermalState_data();
    void thermalState();
    void battery_data();
    void battery();
    void batteryHealth_data();
    void batteryHealth();
    void firstSystemBatteryCounts();
    void bootAndStartTimes();
    void thisMachineAgreesWithItself();
};

void LinuxKernelTest::processorTime_data()
{
    QTest::addColumn<QByteArray>("text");
    QTest::addColumn<QList<quint64>>("expected"); // user, system, idle, nice

    QTest::newRow("guests are part of user and nice")
        << QByteArray("cpu  1000 200 300 5000 40 5 6 7 900 150\ncpu0 1 1 1 1\n")
        << QList<quint64>{1000, 318, 5040, 200};
    QTest::newRow("an old kernel's four columns")
        << QByteArray("cpu 10 20 30 40\n") << QList<quint64>{10, 30, 40, 20};
    QTest::newRow("more than 32 bits") << QByteArray("cpu 5000000000 0 0 9000000000 0 0 0 0 0 0")
                                       << QList<quint64>{5000000000U, 0, 9000000000U, 0};
    QTest::newRow("too few columns") << QByteArray("cpu 10 20 30\n") << QList<quint64>{};
    QTest::newRow("no number") << QByteArray("cpu 10 x 30 40\n") << QList<quint64>{};
    QTest::newRow("another line first") << QByteArray("cpu0 1 2 3 4\ncpu 1 2 3 4\n") << QList<quint64>{};
    QTest::newRow("empty") << QByteArray() << QList<quint64>{};
}

void LinuxKernelTest::processorTime()
{
    QFETCH(const QByteArray, text);
    QFETCH(const QList<quint64>, expected);
    const auto ticks = cpuTicksFrom(text.toStdString());
    QCOMPARE(ticks.has_value(), !expected.isEmpty());
    if (ticks)
        QCOMPARE((QList<quint64>{ticks->user, ticks->system, ticks->idle, ticks->nice}), expected);
}

void LinuxKernelTest::memory_data()
{
    QTest::addColumn<QByteArray>("text");
    QTest::addColumn<quint64>("zram");
    QTest::addColumn<QList<quint64>>("expected"); // active, wired, compressed; KiB

    QTest::newRow("used is total less available, locked memory counted once")
        << QByteArray(
               "MemTotal: 8000 kB\nMemFree: 100 kB\nMemAvailable: 3000 kB\nUnevictable: 60 kB\n"
               "Mlocked: 60 kB\nSUnreclaim: 300 kB\nKernelStack: 20 kB\nPageTables: 40 kB\nZswap: 80 kB\n")
        << quint64{512 * 1024} << QList<quint64>{5000 - 420 - 592, 420, 592};
    QTest::newRow("parts larger than the whole")
        << QByteArray("MemTotal: 1000 kB\nMemAvailable: 900 kB\nSUnreclaim: 150 kB\nZswap: 30 kB\n")
        << quint64{0} << QList<quint64>{0, 70, 30};
    QTest::newRow("more available than there is")
        << QByteArray("MemTotal: 1000 kB\nMemAvailable: 1200 kB\nSUnreclaim: 5 kB\n") << quint64{0}
        << QList<quint64>{0, 0, 0};
    QTest::newRow("no available memory told")
        << QByteArray("MemTotal: 1000 kB\n") << quint64{0} << QList<quint64>{};
    QTest::newRow("garbled") << QByteArray("MemTotal 1000\nMemAvailable: many kB\n") << quint64{0}
                             << QList<quint64>{};
}

void LinuxKernelTest::memory()
{
    QFETCH(const QByteArray, text);
    QFETCH(const quint64, zram);
    QFETCH(const QList<quint64>, expected);
    const auto info = memoryInfoFrom(text.toStdString());
    QCOMPARE(info.has_value(), !expected.isEmpty());
    if (!info)
        return;
    const MemoryPages pages = memoryPagesFrom(*info, zram);
    QCOMPARE((QList<quint64>{pages.active, pages.wired, pages.compressed}), expected);
    QCOMPARE(pages.pageSize, quint64{1024});
}

void LinuxKernelTest::compressedSwapDevicesAreAddedUp()
{
    const StandIn machine;
    machine.write("proc/meminfo",
                  "MemTotal: 9000 kB\nMemAvailable: 1000 kB\nSwapTotal: 700 kB\nSwapFree: 100 kB\n");
    machine.write("sys/block/zram0/mm_stat", " 900000  300000   204800   0  1 2 3\n");
    machine.write("sys/block/zram1/mm_stat", "1 2 102400 0\n");
    machine.write("sys/block/vda/mm_stat", "1 2 999999 0\n");
    QCOMPARE(counters(machine).memoryPages()->compressed, quint64{300});
    QCOMPARE(counters(machine).swapUsedBytes(), quint64{600 * 1024});
    QCOMPARE(counters(machine).physicalMemory(), quint64{9000 * 1024});
}

void LinuxKernelTest::nothingToReadIsNeutral()
{
    const StandIn machine;
    auto kernel = counters(machine);
    QVERIFY(!kernel.cpuTicks());
    QVERIFY(!kernel.memoryPages());
    QCOMPARE(kernel.physicalMemory(), quint64{0});
    QCOMPARE(kernel.swapUsedBytes(), quint64{0});
    QCOMPARE(kernel.startupVolume().totalBytes, qint64{0});
    QCOMPARE(kernel.thermalState(), ThermalState::nominal);
    QVERIFY(!LinuxBootClock(machine.path()).bootEpoch());
}

void LinuxKernelTest::thermalState_data()
{
    QTest::addColumn<QStringList>("files");
    QTest::addColumn<ThermalState>("expected");
    const QStringList trips = {
        u"thermal_zone0/trip_point_0_type=critical"_qs, u"thermal_zone0/trip_point_0_temp=105000"_qs,
        u"thermal_zone0/trip_point_1_type=passive"_qs,  u"thermal_zone0/trip_point_1_temp=90000"_qs,
        u"thermal_zone0/trip_point_2_type=active"_qs,   u"thermal_zone0/trip_point_2_temp=60000"_qs,
        u"thermal_zone0/trip_point_3_type=active"_qs,   u"thermal_zone0/trip_point_3_temp=0"_qs,
    };
    const auto at = [&](const char *temperature) {
        return trips + QStringList{u"thermal_zone0/temp="_qs + QLatin1String(temperature)};
    };
    QTest::newRow("cool") << at("59999") << ThermalState::nominal;
    QTest::newRow("fans") << at("60000") << ThermalState::fair;
    QTest::newRow("slowed down") << at("95000") << ThermalState::serious;
    QTest::newRow("about to switch off") << at("100000") << ThermalState::critical;
    QTest::newRow("absurdly hot") << at("999000") << ThermalState::nominal;
    QTest::newRow("absurdly cold") << at("-274000") << ThermalState::nominal;
    QTest::newRow("no number") << at("unknown") << ThermalState::nominal;
    QTest::newRow("switched off") << at("95000") + QStringList{u"thermal_zone0/mode=disabled"_qs}
                                  << ThermalState::nominal;
    QTest::newRow("hot trip") << QStringList{u"thermal_zone3/temp=80000"_qs,
                                             u"thermal_zone3/trip_point_0_type=hot"_qs,
                                             u"thermal_zone3/trip_point_0_temp=80000"_qs}
                              << ThermalState::critical;
    QTest::newRow("no trips") << QStringList{u"thermal_zone0/temp=99000"_qs} << ThermalState::nominal;
    QTest::newRow("the worst zone counts")
        << at("61000") +
               QStringList{u"thermal_zone1/temp=91000"_qs, u"thermal_zone1/trip_point_0_type=passive"_qs,
                           u"thermal_zone1/trip_point_0_temp=90000"_qs, u"cooling_device0/type=Fan"_qs}
        << ThermalState::serious;
}

void LinuxKernelTest::thermalState()
{
    QFETCH(const QStringList, files);
    QFETCH(const ThermalState, expected);
    const StandIn folder;
    writeAll(folder, files);
    QCOMPARE(thermalStateOf(folder.path()), expected);
}

void LinuxKernelTest::battery_data()
{
    QTest::addColumn<QStringList>("files");
    QTest::addColumn<QString>("expected"); // percent, charging, minutes to empty, minutes to full
    const QStringList battery = {u"BAT0/type=Battery"_qs};

    QTest::newRow("discharging by power")
        << battery + QStringList{u"BAT0/capacity=80"_qs, u"BAT0/status=Discharging"_qs,
                                 u"BAT0/energy_now=40000000"_qs, u"BAT0/energy_full=50000000"_qs,
                                 u"BAT0/power_now=16000000"_qs}
        << u"80 no 150 -"_qs;
    QTest::newRow("charging by current")
        << battery + QStringList{u"BAT0/capacity=50"_qs, u"BAT0/status=Charging"_qs,
                                 u"BAT0/charge_now=2000000"_qs, u"BAT0/charge_full=4000000"_qs,
                                 u"BAT0/current_now=1000000"_qs}
        << u"50 yes - 120"_qs;
    QTest::newRow("negative current")
        << battery + QStringList{u"BAT0/capacity=50"_qs, u"BAT0/status=Discharging"_qs,
                                 u"BAT0/charge_now=2000000"_qs, u"BAT0/current_now=-1000000"_qs}
        << u"50 no 120 -"_qs;
    QTest::newRow("no current yet") << battery + QStringList{u"BAT0/capacity=50"_qs,
                                                             u"BAT0/status=Discharging"_qs,
                                                             u"BAT0/charge_now=2000000"_qs,
                                                             u"BAT0/current_now=0"_qs}
                                    << u"50 no - -"_qs;
    QTest::newRow("a current that would take weeks")
        << battery + QStringList{u"BAT0/capacity=50"_qs, u"BAT0/status=Discharging"_qs,
                                 u"BAT0/charge_now=2000000"_qs, u"BAT0/current_now=12"_qs}
        << u"50 no - -"_qs;
    QTest::newRow("full on the adapter")
        << battery + QStringList{u"BAT0/capacity=100"_qs, u"BAT0/status=Full"_qs} << u"100 no - -"_qs;
    QTest::newRow("capacity worked out")
        << battery +
               QStringList{u"BAT0/energy_now=30"_qs, u"BAT0/energy_full=40"_qs, u"BAT0/status=Unknown"_qs}
        << u"75 ? - -"_qs;
    QTest::newRow("only a mouse") << QStringList{u"hid0/type=Battery"_qs, u"hid0/scope=Device"_qs,
                                                 u"hid0/capacity=9"_qs, u"AC/type=Mains"_qs}
                                  << u"none"_qs;
    QTest::newRow("bay is empty") << battery + QStringList{u"BAT0/present=0"_qs, u"BAT0/capacity=50"_qs}
                                  << u"none"_qs;
}

void LinuxKernelTest::battery()
{
    QFETCH(const QStringList, files);
    QFETCH(const QString, expected);
    const StandIn folder;
    writeAll(folder, files);
    const auto source = LinuxPowerSupply(folder.path()).firstSource();
    const auto number = [](std::optional<int> value) { return value ? QString::number(*value) : u"-"_qs; };
    QString text = u"none"_qs;
    if (source) {
        const QString charging = !source->isCharging ? u"?"_qs : *source->isCharging ? u"yes"_qs : u"no"_qs;
        text = QStringList{number(source->currentCapacity), charging, number(source->timeToEmpty),
                           number(source->timeToFullCharge)}
                   .join(u' ');
    }
    QCOMPARE(text, expected);
}

void LinuxKernelTest::batteryHealth_data()
{
    QTest::addColumn<QStringList>("files");
    QTest::addColumn<int>("health");
    QTest::addColumn<int>("cycles"); // -1: unknown

    QTest::newRow("rounded up") << QStringList{u"B/type=Battery"_qs, u"B/energy_full=43750"_qs,
                                               u"B/energy_full_design=50000"_qs, u"B/cycle_count=312"_qs}
                                << 88 << 312;
    QTest::newRow("better than new") << QStringList{u"B/type=Battery"_qs, u"B/charge_full=51"_qs,
                                                    u"B/charge_full_design=50"_qs, u"B/cycle_count=0"_qs}
                                     << 100 << -1;
    QTest::newRow("design unknown") << QStringList{u"B/type=Battery"_qs, u"B/charge_full=51"_qs,
                                                   u"B/charge_full_design=0"_qs, u"B/cycle_count=-1"_qs}
                                    << -1 << -1;
}

void LinuxKernelTest::batteryHealth()
{
    QFETCH(const QStringList, files);
    QFETCH(const int, health);
    QFETCH(const int, cycles);
    const StandIn folder;
    writeAll(folder, files);
    const BatteryHealth result = LinuxPowerSupply(folder.path()).healthAndCycles();
    QCOMPARE(result.healthPercent.value_or(-1), health);
    QCOMPARE(result.cycles.value_or(-1), cycles);
}

void LinuxKernelTest::firstSystemBatteryCounts()
{
    const StandIn folder;
    writeAll(folder,
             {u"BAT1/type=Battery"_qs, u"BAT1/capacity=10"_qs, u"BAT0/type=Battery"_qs,
              u"BAT0/capacity=70"_qs, u"ABC/type=Battery"_qs, u"ABC/scope=Device"_qs, u"ABC/capacity=5"_qs});
    QCOMPARE(LinuxPowerSupply(folder.path()).firstSource()->currentCapacity, 70);
}

void LinuxKernelTest::bootAndStartTimes()
{
    const StandIn proc;
    proc.write("stat", "cpu 1 2 3 4\nintr 5 6\nctxt 7\nbtime 1700000000\nprocesses 9\n");
    const auto second = static_cast<unsigned long>(::sysconf(_SC_CLK_TCK));
    StandInProcess{.pid = 77, .command = "evil) R 1 (", .startTicks = 599 * second + second * 9 / 10}.writeTo(
        proc);
    LinuxBootClock clock(proc.path());
    proc.write("stat", "btime 1700000900\n"); // the clock was set: both times still count from the same boot
    QCOMPARE(*clock.bootEpoch(), 1700000000.0);
    const double delay = *clock.startEpoch(77) - *clock.bootEpoch();
    QVERIFY2(std::abs(delay - 599.9) < 0.005, qPrintable(QString::number(delay)));
    QVERIFY(!clock.startEpoch(78));
}

void LinuxKernelTest::thisMachineAgreesWithItself()
{
    LinuxKernelCounters kernel({"/proc", "/sys", "/"});
    const auto pages = kernel.memoryPages();
    QVERIFY(pages && kernel.cpuTicks());
    const quint64 used = (pages->active + pages->wired + pages->compressed) * pages->pageSize;
    QVERIFY(used > 0 && used < kernel.physicalMemory());
    const VolumeCapacity volume = kernel.startupVolume();
    QVERIFY(volume.freeBytes > 0 && volume.freeBytes < volume.totalBytes);

    LinuxBootClock clock("/proc");
    const auto start = clock.startEpoch(::getpid());
    QVERIFY(start && *start > *clock.bootEpoch());
    const double age = static_cast<double>(::time(nullptr)) - *start;
    QVERIFY2(age > -2 && age < 600, qPrintable(QString::number(age)));
}

QTEST_APPLESS_MAIN(LinuxKernelTest)
#include "LinuxKernelTest.moc"
