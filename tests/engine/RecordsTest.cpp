#include "engine/ByteCount.h"
#include "engine/HealthLevel.h"
#include "engine/ProcessSample.h"
#include "engine/ProgramFigures.h"
#include "engine/WholeNumber.h"
#include "support/Table.h"

#include <QtTest/QTest>

#include <limits>

using namespace swabby;

class RecordsTest : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void trustAndAdvice()
    {
        const QStringList advice = {u"keep"_qs, u"quit"_qs, u"forceQuit"_qs};
        // Processor, memory, energy; the trust and the advice.
        compareTable(fixture(u"engine/trust_and_advice.txt"_qs), [&](const Cells &row) {
            ProcessSample process;
            process.path = row.text(0);
            process.isApp = row[0] == "an app";
            process.holdsSession = row[0] == "the session's";
            process.owner = row[0] == "another's" ? u"ada"_qs : QString();
            process.cpuPercent = row.number(1);
            process.memPercent = row.number(2);
            process.energyImpact = row.number(3);
            return QString::number(process.trustRatio()) + u' ' +
                   advice[static_cast<int>(recommendation(process))];
        });
    }

    void byteCounts()
    {
        compareTable(fixture(u"engine/byte_counts.txt"_qs),
                     [](const Cells &row) { return fileByteCount(row[0].toLongLong()); });
        compareTable(fixture(u"engine/memory_byte_counts.txt"_qs),
                     [](const Cells &row) { return memoryByteCount(row[0].toULongLong()); });
    }

    void whatAProgramTakes()
    {
        // Processors, percent of one; in a sentence, in a row where that differs, and 1.5 GiB of memory.
        compareTable(fixture(u"engine/program_figures.txt"_qs), [](const Cells &row) {
            MachineWords words;
            words.processors = int(row.number(1));
            words.programsLikeDisks = words.processors == 0;
            QStringList texts = {powerText(row.number(2), words)};
            if (const auto cores = coresText(row.number(2), words))
                texts.append(*cores);
            return (texts << programMemoryText(1'610'612'736, words)).join(u", ");
        });
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
