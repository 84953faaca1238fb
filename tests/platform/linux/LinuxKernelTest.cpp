#include "StandIn.h"
#include "platform/linux/LinuxBootClock.h"
#include "platform/linux/LinuxKernelCounters.h"
#include "platform/linux/LinuxPowerSupply.h"
#include "platform/linux/ThermalZones.h"
#include "support/Table.h"

#include <QtTest/QTest>

#include <unistd.h>

#include <cmath>
#include <ctime>

using namespace swabby;

namespace {

/// A folder with a file for each "FILE=CONTENT" of the words; files without a folder lie in the usual one.
struct FilesOf : StandIn {
    FilesOf(const QByteArray &words, const std::string &usual)
    {
        for (const QByteArray &word : words.split(' ')) {
            const std::string file = word.first(word.indexOf('=')).toStdString();
            write(file.find('/') == std::string::npos ? usual + '/' + file : file,
                  word.mid(word.indexOf('=') + 1).toStdString() + '\n');
        }
    }
};

QString numbers(std::initializer_list<std::optional<quint64>> values)
{
    QStringList words;
    for (const auto &value : values)
        words.append(value ? QString::number(*value) : u"-"_qs);
    return words.join(u' ');
}

LinuxKernelCounters counters(const StandIn &machine)
{
    return LinuxKernelCounters({machine.path("proc"), machine.path("sys"), machine.path("nowhere")});
}

} // namespace

class LinuxKernelTest : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void processorTime()
    {
        // User, system, idle and nice.
        compareTable(fixture(u"linux/processor_time.txt"_qs), [](const Cells &row) {
            const auto ticks = cpuTicksFrom(row.string(1));
            return ticks ? numbers({ticks->user, ticks->system, ticks->idle, ticks->nice}) : u"none"_qs;
        });
    }

    void memory()
    {
        // The text with "kB" at each line's end, the compressed swap; active, wired and compressed pages in
        // KiB.
        compareTable(R"(
            locked memory counted once | MemTotal: 8000, MemFree: 100, MemAvailable: 3000, Unevictable: 60, Mlocked: 60, SUnreclaim: 300, KernelStack: 20, PageTables: 40, Zswap: 80 | 524288 | 3988 420 592
            parts larger than the whole | MemTotal: 1000, MemAvailable: 900, SUnreclaim: 150, Zswap: 30 | 0 | 0 70 30
            more available than there is | MemTotal: 1000, MemAvailable: 1200, SUnreclaim: 5 | 0 | 0 0 0
            no available memory told | MemTotal: 1000 | 0 | none
            garbled | MemTotal 1000, MemAvailable: many | 0 | none)",
                     [](const Cells &row) {
                         const QByteArray text = row[1].replace(", ", " kB\n") + " kB\n";
                         const auto info = memoryInfoFrom(text.toStdString());
                         if (!info)
                             return u"none"_qs;
                         const MemoryPages pages = memoryPagesFrom(*info, quint64(row.number(2)));
                         return numbers({pages.active, pages.wired, pages.compressed}) +
                                (pages.pageSize == 1024 ? u""_qs : u" of another size"_qs);
                     });
    }

    void compressedSwapDevicesAreAddedUp()
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

    void nothingToReadIsNeutral()
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

    void thermalState()
    {
        const QByteArray trips = "trip_point_0_type=critical trip_point_0_temp=105000 "
                                 "trip_point_1_type=passive trip_point_1_temp=90000 "
                                 "trip_point_2_type=active trip_point_2_temp=60000 "
                                 "trip_point_3_type=active trip_point_3_temp=0 ";
        compareTable(fixture(u"linux/thermal_state.txt"_qs), [&](const Cells &row) {
            const FilesOf files(row[1].replace("TRIPS ", trips), "thermal_zone0");
            return QString::number(static_cast<int>(thermalStateOf(files.path())));
        });
    }

    void battery()
    {
        // Percent, charging, minutes to empty and to full.
        compareTable(fixture(u"linux/battery.txt"_qs), [](const Cells &row) {
            const FilesOf files(row[1], "BAT0");
            const auto source = LinuxPowerSupply(files.path()).firstSource();
            if (!source)
                return u"none"_qs;
            const auto charging = source->isCharging;
            return numbers({source->currentCapacity}) +
                   (!charging   ? u" ? "_qs
                    : *charging ? u" yes "_qs
                                : u" no "_qs) +
                   numbers({source->timeToEmpty, source->timeToFullCharge});
        });
        // Health and cycles.
        compareTable(R"(
            rounded up | type=Battery energy_full=43750 energy_full_design=50000 cycle_count=312 | 88 312
            better than new | type=Battery charge_full=51 charge_full_design=50 cycle_count=0 | 100 -
            design unknown | type=Battery charge_full=51 charge_full_design=0 cycle_count=-1 | - -)",
                     [](const Cells &row) {
                         const FilesOf files(row[1], "BAT0");
                         const BatteryHealth health = LinuxPowerSupply(files.path()).healthAndCycles();
                         return numbers({health.healthPercent, health.cycles});
                     });
    }

    void bootAndStartTimes()
    {
        const StandIn proc;
        proc.write("stat", "cpu 1 2 3 4\nintr 5 6\nctxt 7\nbtime 1700000000\nprocesses 9\n");
        const auto second = static_cast<unsigned long>(::sysconf(_SC_CLK_TCK));
        StandInProcess{.pid = 77, .command = "evil) R 1 (", .startTicks = 599 * second + second * 9 / 10}
            .writeTo(proc);
        LinuxBootClock clock(proc.path());
        proc.write("stat",
                   "btime 1700000900\n"); // the clock was set: both times still count from the same boot
        QCOMPARE(*clock.bootEpoch(), 1700000000.0);
        const double delay = *clock.startEpoch(77) - *clock.bootEpoch();
        QVERIFY2(std::abs(delay - 599.9) < 0.005, qPrintable(QString::number(delay)));
        QVERIFY(!clock.startEpoch(78));
    }

    void thisMachineAgreesWithItself()
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
};

QTEST_APPLESS_MAIN(LinuxKernelTest)
#include "LinuxKernelTest.moc"
