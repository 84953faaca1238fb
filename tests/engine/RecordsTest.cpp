#include "engine/ByteCount.h"
#include "engine/HealthLevel.h"
#include "engine/ProcessSample.h"
#include "engine/WholeNumber.h"

#include <QtTest/QTest>

#include <limits>

using namespace swabby;

class RecordsTest : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void trustAndAdvice_data()
    {
        QTest::addColumn<ProcessSample>("process");
        QTest::addColumn<int>("trust");
        QTest::addColumn<ActionRecommendation>("advice");
        using enum ActionRecommendation;
        const QString app = u"an app"_qs;
        const auto row = [&](const QString &path, double cpu, double memory, double energy, int trust,
                             ActionRecommendation advice) {
            const ProcessSample process = {.name = {},
                                           .path = path,
                                           .cpuPercent = cpu,
                                           .memPercent = memory,
                                           .isApp = path == app,
                                           .energyImpact = energy};
            QTest::addRow("%s %g %g %g", qPrintable(path), cpu, memory, energy) << process << trust << advice;
        };
        row(u"/System/Library/x"_qs, 0, 0, 0, 95, keep);
        row(u"/usr/libexec/x"_qs, 25, 0, 0, 95, quit);
        row(u"/usr/sbin/x"_qs, 25.1, 0, 0, 80, quit);
        row(u"/usr/sbin/x"_qs, 50.1, 0, 0, 65, quit);
        row(u"/usr/sbin/x"_qs, 80, 0, 0, 65, forceQuit);
        row(u"/usr/sbin/x"_qs, 80.1, 0, 0, 50, forceQuit);
        row(u"/usr/libexec/x"_qs, 90, 60, 50, 5, forceQuit);
        row(app, 24.99, 0, 0, 90, keep);
        row(app, 50, 0, 0, 75, quit);
        row(app, 50.1, 0, 0, 60, quit);
        row(app, 400, 0, 0, 45, forceQuit);
        row(u"/Systems/x"_qs, 0, 0, 0, 85, keep);
        row(u"/opt/usr/sbin/x"_qs, 25.1, 0, 0, 70, quit);
        row(u"/opt/x"_qs, 69.9, 0, 0, 55, quit);
        row(u"/opt/x"_qs, 70, 0, 0, 55, forceQuit);
        row(u"/opt/x"_qs, 80.1, 0, 0, 40, forceQuit);
        row(u"/opt/x"_qs, 0, 24.9, 0, 85, keep);
        row(u"/opt/x"_qs, 0, 25, 0, 85, quit);
        row(u"/opt/x"_qs, 0, 30, 0, 75, quit);
        row(u"/opt/x"_qs, 0, 50, 0, 75, quit);
        row(u"/opt/x"_qs, 0, 50.1, 0, 60, quit);
        row(u"/opt/x"_qs, 0, 0, 19.9, 85, keep);
        row(u"/opt/x"_qs, 0, 0, 20, 75, keep);
        row(u"/opt/x"_qs, 0, 0, 44.9, 75, keep);
        row(u"/opt/x"_qs, 0, 0, 45, 75, forceQuit);
        row(u"/opt/x"_qs, 0, 0, 50, 60, forceQuit);
        row(u"/opt/x"_qs, 60, 0, 20, 45, quit);
        row(u"/opt/x"_qs, 60, 51, 0, 30, forceQuit);
    }

    void trustAndAdvice()
    {
        QFETCH(ProcessSample, process);
        QTEST(process.trustRatio(), "trust");
        QTEST(recommendation(process), "advice");
    }

    void byteCounts_data()
    {
        QTest::addColumn<QString>("text");
        QTest::addColumn<QString>("expected");
        const auto file = [](std::int64_t bytes, const char *expected) {
            QTest::addRow("%lld", static_cast<long long>(bytes))
                << fileByteCount(bytes) << QString::fromLatin1(expected);
        };
        file(0, "Zero KB");
        file(1, "1 byte");
        file(999, "999 bytes");
        file(1'000, "1 KB");
        file(1'499, "1 KB");
        file(1'500, "2 KB");
        file(999'499, "999 KB");
        file(999'500, "1 MB"); // rounds up to a whole next unit
        file(999'999, "1 MB");
        file(1'049'999, "1 MB");
        file(1'050'000, "1.1 MB");
        file(846'200'000, "846.2 MB");
        file(999'949'999, "999.9 MB");
        file(999'950'000, "1 GB");
        file(1'004'999'999, "1 GB");
        file(1'005'000'000, "1.01 GB");
        file(7'800'000'000, "7.8 GB");
        file(100'050'000'000, "100.05 GB");
        file(999'995'000'000, "1 TB");
        file(std::numeric_limits<std::int64_t>::max(), "9.22 EB");
        file(-1'500, "-2 KB");
        file(std::numeric_limits<std::int64_t>::min(), "-9.22 EB");
        const auto memory = [](std::uint64_t bytes, const char *expected) {
            QTest::addRow("memory %llu", static_cast<unsigned long long>(bytes))
                << memoryByteCount(bytes) << QString::fromLatin1(expected);
        };
        memory(1'023, "1023 bytes");
        memory(1'535, "1 KB");
        memory(1'536, "2 KB");
        memory(1'048'576 - 513, "1023 KB");
        memory(1'048'576 - 512, "1 MB");
        memory(std::uint64_t(16) << 30, "16 GB");
        memory(std::numeric_limits<std::uint64_t>::max(), "16 EB");
    }

    void byteCounts()
    {
        QFETCH(QString, text);
        QTEST(text, "expected");
    }

    void onlyPidAndLoadMakeADifference()
    {
        const ProcessSample before = {7, u"mill"_qs, u"/mill"_qs, 1, 2, 3, true, 4, 5};
        QVERIFY(before == (ProcessSample{7, u"loom"_qs, u"/loom"_qs, 1, 2, 30, false, 40, 50}));
        QVERIFY(before != (ProcessSample{8, before.name, before.path, 1, 2, 3, true, 4, 5}));
        QVERIFY(before != (ProcessSample{7, before.name, before.path, 1.1, 2, 3, true, 4, 5}));
        QVERIFY(before != (ProcessSample{7, before.name, before.path, 1, 2.1, 3, true, 4, 5}));
    }

    void smallThings()
    {
        QVERIFY(HealthLevel::red > HealthLevel::yellow && HealthLevel::yellow > HealthLevel::green);
        QCOMPARE(wholeNumber(99.999), 99);
        QCOMPARE(wholeNumber(-0.9), 0);
        QCOMPARE(wholeNumber(std::numeric_limits<double>::quiet_NaN()), 0);
        QVERIFY(wholeNumber(std::numeric_limits<double>::infinity()) > 0);
    }
};

QTEST_GUILESS_MAIN(RecordsTest)
#include "RecordsTest.moc"
