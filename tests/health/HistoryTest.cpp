#include "health/HistoryKeeper.h"
#include "health/HistoryStore.h"
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
    void whatAFileGives_data()
    {
        QTest::addColumn<QByteArray>("content");
        QTest::addColumn<QList<double>>("loads");
        const auto row = [](const char *name, const QByteArray &content, const QList<double> &loads = {}) {
            QTest::newRow(name) << content << loads;
        };
        const auto point = [](double date, double cpu) {
            return R"({"date":)" + QByteArray::number(date - epoch2001, 'f', 6) + R"(,"cpu":)" +
                   QByteArray::number(cpu) + R"(,"mem":5})";
        };
        row("empty file", "");
        row("garbage", "not json\xff");
        row("an object", R"({"points":[]})");
        row("cut in the middle", '[' + point(now, 1) + ",{\"da");
        row("empty array", "[]");
        row("a number among points", '[' + point(now, 1) + ",7]");
        row("a text for a number", '[' + point(now, 1) + R"(,{"date":811692800,"cpu":"2","mem":5}])");
        row("a missing key", '[' + point(now, 1) + R"(,{"date":811692800,"cpu":2}])");
        row("null for a number", '[' + point(now, 1) + R"(,{"date":null,"cpu":2,"mem":5}])");
        row("an unknown key besides", R"([{"date":811692800,"cpu":2,"mem":5,"id":"x"}])", {2});
        row("23 hours and 25 hours old",
            '[' + point(now - 25 * hour, 1) + ',' + point(now - 23 * hour, 2) + ']', {2});
        row("exactly a day old",
            '[' + point(now - 24 * hour, 1) + ',' + point(now - 24 * hour - 0.01, 2) + ']', {1});
        row("from the future, and out of order",
            '[' + point(now + 9 * hour, 1) + ',' + point(now - hour, 2) + ',' + point(now, 3) + ']',
            {1, 2, 3});
        row("deeply nested", QByteArray(100'000, '['));
    }

    void whatAFileGives()
    {
        QFETCH(QByteArray, content);
        const DataFolder folder;
        folder.write(content);
        QTEST(loadsOf(HistoryStore::load(folder.path(), now)), "loads");
        QCOMPARE(folder.read(), content); // neither repaired nor deleted
        HistoryStore::save(folder.path(), {}, now);
        QCOMPARE(folder.read(), "[]");
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
            HistoryKeeper(folder).keep({{now, 1, 1}}, now);
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
