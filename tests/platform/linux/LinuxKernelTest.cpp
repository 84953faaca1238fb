#include "StandIn.h"
#include "platform/linux/LinuxBootClock.h"
#include "platform/linux/LinuxKernelCounters.h"
#include "platform/linux/LinuxPowerSupply.h"
#include "platform/linux/ThermalZones.h"
#include "platform/linux/Volumes.h"
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
        compareTable(fixture(u"linux/memory.txt"_qs), [](const Cells &row) {
            const QByteArray text = row[1].replace(", ", " kB\n") + " kB\n";
            const auto info = memoryInfoFrom(text.toStdString());
            if (!info)
                return u"none"_qs;
            const MemoryPages pages = memoryPagesFrom(*info, quint64(row.number(2)));
            return numbers({pages.active, pages.wired, pages.compressed}) +
                   (pages.pageSize == 1024 ? u""_qs : u" of another size"_qs);
        });
    }

    void counters()
    {
        compareScenes(u"linux/kernel_counters.txt"_qs, [](const StandIn &files) {
            LinuxKernelCounters kernel({files.path("proc"), files.path("sys"), {files.path("nowhere")}});
            const auto pages = kernel.memoryPages();
            return numbers({kernel.cpuTicks() ? kernel.cpuTicks()->user : std::optional<quint64>(),
                            pages ? pages->compressed : std::optional<quint64>(), kernel.swapUsedBytes(),
                            kernel.physicalMemory(), kernel.startupVolume().totalBytes,
                            quint64(kernel.thermalState()), LinuxBootClock(files.path("proc")).bootEpoch()});
        });
    }

    void fullestVolume()
    {
        // The volumes, each where it is mounted, bytes in all and free, "ro" when it can only be read.
        compareTable(fixture(u"linux/fullest_volume.txt"_qs), [](const Cells &row) {
            std::vector<Volume> volumes;
            for (const QByteArray &words : row[1].split(',')) {
                const QList<QByteArray> word = words.simplified().split(' ');
                if (word.size() >= 3)
                    volumes.push_back(
                        {{word[2].toLongLong(), word[1].toLongLong(), QString::fromUtf8(word[0])},
                         word.last() == "ro"});
            }
            const VolumeCapacity fullest = fullestOf(volumes);
            return u"%1 of %2 %3"_qs.arg(fullest.freeBytes)
                .arg(fullest.totalBytes)
                .arg(fullest.mountPoint)
                .trimmed();
        });
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
        compareTable(fixture(u"linux/battery_health.txt"_qs), [](const Cells &row) {
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
        LinuxKernelCounters kernel({"/proc", "/sys", {"/", "/usr", "/proc"}});
        const auto pages = kernel.memoryPages();
        QVERIFY(pages && kernel.cpuTicks());
        const quint64 used = (pages->active + pages->wired + pages->compressed) * pages->pageSize;
        QVERIFY(used > 0 && used < kernel.physicalMemory());
        const VolumeCapacity volume = kernel.startupVolume();
        QVERIFY(volume.freeBytes > 0 && volume.freeBytes < volume.totalBytes);
        QCOMPARE(volumesOf(std::vector<std::string>{"/usr/bin", "/usr/bin/env"}).size(), 1);

        LinuxBootClock clock("/proc");
        const auto start = clock.startEpoch(::getpid());
        QVERIFY(start && *start > *clock.bootEpoch());
        const double age = static_cast<double>(::time(nullptr)) - *start;
        QVERIFY2(age > -2 && age < 600, qPrintable(QString::number(age)));
    }
};

QTEST_APPLESS_MAIN(LinuxKernelTest)
#include "LinuxKernelTest.moc"
