#include "settings/Settings.h"
#include "platform/posix/FileSettingsStore.h"
#include "support/TemporaryMachine.h"

#include <QtCore/QFile>
#include <QtCore/QJsonArray>
#include <QtCore/QJsonDocument>
#include <QtTest/QTest>

#include <thread>

using namespace swabby;

namespace {

const QString fileName = u"home/Library/Preferences/com.swabby.app.json"_qs;

QByteArray contentOf(const TemporaryMachine &folder, const QString &suffix = {})
{
    QFile file(folder.folder() + u'/' + fileName + suffix);
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
}

/// A value as JSON, "refused" for none.
QString textOf(const QJsonValue &value)
{
    const QByteArray list = QJsonDocument(QJsonArray{value}).toJson(QJsonDocument::Compact);
    return value.isUndefined() ? u"refused"_qs : QString::fromUtf8(list.mid(1, list.size() - 2));
}

/// Rows of key, what is given and the value it leads to.
void addRows(const char *rows)
{
    for (const char *column : {"key", "given", "value"})
        QTest::addColumn<QString>(column);
    for (const QString &row : QString::fromLatin1(rows).split(u'\n', Qt::SkipEmptyParts)) {
        const QStringList fields = row.trimmed().split(u' ');
        QTest::newRow(qPrintable(row.trimmed())) << fields[0] << fields[1] << fields[2];
    }
}

} // namespace

class SettingsTest : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void emptyStoreGivesDefaults()
    {
        const auto machine = TemporaryMachine().open();
        const Settings settings(*machine->settings);
        const QList<double> numbers = {settings.cpuYellow(),     settings.cpuRed(),
                                       settings.memYellow(),     settings.memRed(),
                                       settings.processCpuRed(), settings.storageNotifyThresholdGB()};
        QCOMPARE(numbers, QList<double>({60, 85, 75, 90, 80, 2}));
        QVERIFY(settings.notifyOnRed() && settings.notifyOnStorage() && settings.showInDock());
        QCOMPARE(settings.rowDensity(), RowDensity::comfortable);
        QVERIFY(!settings.lastWeeklySummaryDate() && !settings.lastStorageNotifyCheckDate());
        QVERIFY(!settings.hasCompletedOnboarding() && settings.pinnedProcessNames().isEmpty());
        QCOMPARE(settings.weeklyAttentionCount(), 0);
    }

    void storedValues_data()
    {
        addRows(R"(cpuRed 0 0
                   cpuRed -5.5 -5.5
                   cpuRed false 0
                   cpuRed "70" 85
                   cpuRed [70] 85
                   cpuRed null 85
                   notifyOnRed false false
                   notifyOnRed 0 false
                   notifyOnRed 2 true
                   notifyOnRed "false" true
                   rowDensity "compact" "compact"
                   rowDensity "Compact" "comfortable"
                   rowDensity 1 "comfortable"
                   lastWeeklySummaryDate 1773388921.5 1773388921.5
                   lastWeeklySummaryDate "yesterday" null
                   lastWeeklySummaryDate true null
                   pinnedProcessNames ["Loom",""] ["Loom",""]
                   pinnedProcessNames ["Loom",7] []
                   pinnedProcessNames "Loom" []
                   weeklyAttentionCount 3.9 3
                   weeklyAttentionCount 1e300 0
                   weeklyBytesFreed 9007199254740993 9007199254740993)");
    }

    void storedValues()
    {
        QFETCH(QString, key);
        QFETCH(QString, given);
        const TemporaryMachine folder;
        folder.writeFile(fileName, QStringLiteral("{\"%1\":%2}").arg(key, given).toUtf8());
        const auto machine = folder.open();
        QTEST(textOf(Settings(*machine->settings).effective(*Settings::find(key))), "value");
    }

    void givenAsText_data()
    {
        addRows(R"(cpuRed 72.5 72.5
                   cpuRed 72,5 refused
                   cpuRed nan refused
                   cpuRed inf refused
                   cpuRed 72% refused
                   notifyOnRed false false
                   notifyOnRed TRUE refused
                   notifyOnRed 1 refused
                   weeklyAttentionCount 7 7
                   weeklyAttentionCount 7.5 refused
                   weeklyAttentionCount 99999999999999999999 refused
                   lastWeeklySummaryDate 1773388921 1773388921
                   lastWeeklySummaryDate 2026-03-13 refused
                   pinnedProcessNames ["Loom"] ["Loom"]
                   pinnedProcessNames [1] refused
                   pinnedProcessNames {"a":"b"} refused
                   pinnedProcessNames ["Loom" refused)");
    }

    void givenAsText()
    {
        QFETCH(QString, key);
        QFETCH(QString, given);
        QTEST(textOf(Settings::parse(*Settings::find(key), given)), "value");
    }

    void writing()
    {
        const TemporaryMachine folder;
        folder.writeFile(fileName, R"({"foreign":{"kept":[1]},"cpuRed":70})");
        const auto machine = folder.open();
        Settings settings(*machine->settings);
        settings.setLastWeeklySummaryDate(5.5);
        settings.setPinnedProcessNames({u"Ünïcode"_qs});
        settings.addAttention();
        settings.addAttention();
        QCOMPARE(settings.lastWeeklySummaryDate(), 5.5);
        settings.setLastWeeklySummaryDate({});
        QVERIFY(settings.unset(*Settings::find(u"cpuRed"_qs)));
        QCOMPARE(settings.cpuRed(), 85.0);
        const QByteArray expected =
            R"({"foreign":{"kept":[1]},"pinnedProcessNames":["Ünïcode"],"weeklyAttentionCount":2})";
        QCOMPARE(QJsonDocument::fromJson(contentOf(folder)), QJsonDocument::fromJson(expected));
    }

    void twoProgramsLoseNothing()
    {
        const TemporaryMachine folder;
        FileSettingsStore one(folder.folder() + u'/' + fileName);
        FileSettingsStore other(folder.folder() + u'/' + fileName);
        constexpr int rounds = 40;
        const auto work = [](FileSettingsStore &store, const QString &own) {
            for (int i = 1; i <= rounds; ++i) {
                store.store(own, i);
                store.add(u"sum"_qs, 1);
            }
        };
        std::thread beside([&] { work(other, u"b"_qs); });
        work(one, u"a"_qs);
        beside.join();
        for (const FileSettingsStore *store : {&one, &other}) {
            QCOMPARE(store->value(u"a"_qs), rounds);
            QCOMPARE(store->value(u"b"_qs), rounds);
            QCOMPARE(store->value(u"sum"_qs), 2 * rounds);
        }
        QVERIFY(other.remove(u"a"_qs));
        QVERIFY(one.value(u"a"_qs).isUndefined());
    }

    void whatIsNoSettingsFileIsPutAside()
    {
        for (const QByteArray content : {"bplist00\xff", "{\"cpuRed\": 70, \"cpu", "[1]"}) {
            const TemporaryMachine folder;
            folder.writeFile(fileName, content);
            const auto machine = folder.open();
            Settings settings(*machine->settings);
            QCOMPARE(settings.cpuRed(), 85.0);
            QCOMPARE(contentOf(folder), content); // reading changes nothing
            QVERIFY(settings.store(*Settings::find(u"cpuRed"_qs), 50));
            QCOMPARE(contentOf(folder, u".unreadable"_qs), content);
            QCOMPARE(settings.cpuRed(), 50.0);
        }
    }

    void aPlaceThatCannotBeWritten()
    {
        const TemporaryMachine folder;
        FileSettingsStore store(folder.folder() +
                                u"/machine.json/below/settings.json"_qs); // a file in the way
        QVERIFY(!store.store(u"cpuRed"_qs, 50) && !store.add(u"sum"_qs, 1));
        QVERIFY(store.remove(u"cpuRed"_qs)); // it is absent, as asked
        QVERIFY(store.value(u"cpuRed"_qs).isUndefined());
    }
};

QTEST_GUILESS_MAIN(SettingsTest)
#include "SettingsTest.moc"
