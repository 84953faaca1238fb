#include "health/HistoryKeeper.h"
#include "health/HistoryStore.h"
#include "support/Table.h"
#include "support/TemporaryMachine.h"

#include <QtCore/QDir>
#include <QtCore/QFile>
#include <QtTest/QTest>

#include <memory>

using namespace swabby;

namespace {

constexpr double epoch2001 = 978'307'200;
constexpr double now = 1'790'000'000.25;
constexpr double hour = 3'600;

/// The folder of a history, with what the product would not write there.
struct DataFolder : TemporaryMachine {
    QString path() const { return QFileInfo(historyFile()).path(); }
    QStringList files() const { return QDir(path()).entryList(QDir::Files); }

    void write(const QByteArray &content, const char *name = "history.json") const
    {
        writeFile(u"home/Library/Application Support/Swabby/"_qs + QString::fromLatin1(name), content);
    }

    QByteArray read() const
    {
        QFile stored(historyFile());
        return stored.open(QIODevice::ReadOnly) ? stored.readAll() : QByteArray("no file");
    }
};

QList<double> loadsOf(const History &points)
{
    QList<double> loads;
    for (const HistoryPoint &point : points)
        loads.append(point.cpu);
    return loads;
}

} // namespace

class HistoryTest : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void whatAFileGives()
    {
        // NOW-X stands for a date X hours ago; the loads of the points that are read.
        const QByteArray deep = "deeply nested | " + QByteArray(100'000, '[') + " |\n";
        compareTable(deep + fixture(u"health/what_a_file_gives.txt"_qs), [](const Cells &row) {
            QByteArray content = row[1];
            for (const char *hours : {"24.00001", "--9", "25", "24", "23", "1", "0"}) {
                const double age = QByteArray(hours).replace("--", "-").toDouble() * hour;
                content.replace(QByteArray("NOW-") + QByteArray(hours).replace("--", "-"),
                                QByteArray::number(now - age - epoch2001, 'f', 6));
            }
            const DataFolder folder;
            folder.write(content);
            QStringList loads;
            for (const double load : loadsOf(HistoryStore::load(folder.path(), now)))
                loads.append(QString::number(load));
            const bool isKept = folder.read() == content; // neither repaired nor deleted
            HistoryStore::save(folder.path(), {}, now);
            return isKept && folder.read() == "[]" ? loads.join(u' ') : u"changed"_qs;
        });
    }

    void theFormatToTheByte()
    {
        const DataFolder folder; // the folders above the file do not exist yet
        HistoryStore::save(folder.path(),
                           {{epoch2001 - 1, 1, 1}, {epoch2001 + 1.5, 12.5, 40}, {epoch2001 + 60, 0, 100}},
                           epoch2001 + historySpanSeconds);
        QCOMPARE(folder.read(), R"([{"date":1.5,"cpu":12.5,"mem":40},{"date":60,"cpu":0,"mem":100}])");
        QCOMPARE(folder.files(), QStringList(u"history.json"_qs));
    }

    void whatIsSavedComesBack()
    {
        const DataFolder folder;
        const History points = {
            {now - 86'399.125, 100.0 / 3, 1e-9}, {now, 0.1 + 0.2, 99.999'999'999'999}, {now, 0, 0}};
        HistoryStore::save(folder.path(), points, now);
        QCOMPARE(HistoryStore::load(folder.path(), now), points);
    }

    void aPlaceThatCannotHoldAHistory()
    {
        const TemporaryMachine machine;
        const QString fileInTheWay = machine.folder() + u"/machine.json"_qs;
        for (const QString &folder : {fileInTheWay, fileInTheWay + u"/below"_qs, QString()}) {
            HistoryStore::save(folder, {{now, 1, 1}}, now);
            int told = 0;
            HistoryKeeper keeper(folder, [&](const QString &why) { told += why.isEmpty() ? 100 : 1; });
            for (int minute = 0; minute < 3; ++minute) {
                keeper.keep({{now, 1, 1}}, now);
                QVERIFY(!keeper.finish().isEmpty());
            }
            QCOMPARE(told, 1);
            QVERIFY(HistoryStore::load(folder, now).isEmpty());
        }
    }

    void theKeeperSavesWhatWaitsAtItsEnd()
    {
        const DataFolder folder;
        {
            HistoryKeeper keeper(folder.path());
            keeper.keep({{now, 1, 1}}, now);
            keeper.keep({{now, 1, 1}, {now + 60, 2, 2}}, now + 60);
        }
        QCOMPARE(loadsOf(HistoryStore::load(folder.path(), now)), QList({1.0, 2.0}));
    }

    void onlyOneKeeperWrites()
    {
        const DataFolder folder;
        folder.write(R"([{"date":811692000,"cpu":1,"mem":1}])");
        const HistoryPoint common = {811'692'000 + epoch2001, 1, 1};
        auto first = std::make_unique<HistoryKeeper>(folder.path());
        auto second = std::make_unique<HistoryKeeper>(folder.path());
        second->keep({common, {now - 10, 3, 3}}, now);
        second.reset();
        QCOMPARE(loadsOf(HistoryStore::load(folder.path(), now)), QList({1.0}));

        second = std::make_unique<HistoryKeeper>(folder.path());
        first->keep({common, {now, 2, 2}}, now);
        first.reset();
        // What both knew from the file stands there once, and nothing that the first left is lost.
        for (const double later : {60.0, 120.0})
            second->keep({common, {now + 30, 3, 3}, {now + later, 4, 4}}, now + later);
        second.reset();
        QCOMPARE(loadsOf(HistoryStore::load(folder.path(), now)), QList({1.0, 2.0, 3.0, 4.0}));
    }

    void whatKilledSavesLeftIsSweptOnce()
    {
        const DataFolder folder;
        folder.write("half", "history.json.AbCdEf");
        folder.write("kept", "history.json.bak");
        folder.write("kept", "history.json.bak001");
        folder.write("kept", "other.json.AbCdEf");
        const HistoryKeeper keeper(folder.path());
        QCOMPARE(QDir(folder.path()).entryList(QDir::Files),
                 QStringList({u"history.json.bak"_qs, u"history.json.bak001"_qs, u"other.json.AbCdEf"_qs}));
        // Now another program may be saving.
        folder.write("half", "history.json.GhIjKl");
        HistoryStore::load(folder.path(), now);
        QVERIFY(folder.files().contains(u"history.json.GhIjKl"_qs));
    }
};

QTEST_GUILESS_MAIN(HistoryTest)
#include "HistoryTest.moc"
