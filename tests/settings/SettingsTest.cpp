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
        settings.store(setting<"lastWeeklySummaryDate">, 5.5);
        settings.setPinned(u"gone"_qs, true);
        settings.setPinned(u"Ünïcode"_qs, true);
        settings.setPinned(u"gone"_qs, false);
        settings.add(setting<"weeklyAttentionCount">, 1);
        settings.add(setting<"weeklyAttentionCount">, 1);
        QCOMPARE(settings.value(setting<"lastWeeklySummaryDate">), 5.5);
        QVERIFY(!settings.replace(setting<"lastWeeklySummaryDate">, 5, 6));
        settings.unset(setting<"lastWeeklySummaryDate">);
        QVERIFY(settings.unset(setting<"cpuRed">));
        QCOMPARE(settings.value(setting<"cpuRed">), 85.0);
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
        const auto work = [](FileSettingsStore &store, const SettingKey &own) {
            Settings settings(store);
            for (int i = 1; i <= rounds; ++i) {
                settings.store(own, i);
                settings.add(setting<"weeklyBytesFreed">, 1);
                settings.setPinned(QLatin1String(own.name) + QString::number(i), true);
            }
        };
        std::thread beside([&] { work(other, setting<"cpuRed">); });
        work(one, setting<"memRed">);
        beside.join();
        for (FileSettingsStore *store : {&one, &other}) {
            const Settings settings(*store);
            QCOMPARE(settings.value(setting<"cpuRed">), rounds);
            QCOMPARE(settings.value(setting<"memRed">), rounds);
            QCOMPARE(settings.value(setting<"weeklyBytesFreed">), 2 * rounds);
            QCOMPARE(settings.value(setting<"pinnedProcessNames">).size(), 2 * rounds);
        }
    }

    void whatIsNoSettingsFileIsPutAside()
    {
        for (const QByteArray content : {"bplist00\xff", "{\"cpuRed\": 70, \"cpu", "[1]"}) {
            const TemporaryMachine folder;
            folder.writeFile(fileName, content);
            const auto machine = folder.open();
            Settings settings(*machine->settings);
            QCOMPARE(settings.value(setting<"cpuRed">), 85.0);
            QCOMPARE(contentOf(folder), content); // reading changes nothing
            QVERIFY(settings.store(setting<"cpuRed">, 50));
            QCOMPARE(contentOf(folder, u".unreadable"_qs), content);
            QCOMPARE(settings.value(setting<"cpuRed">), 50.0);
        }
    }

    void aPlaceThatCannotBeWritten()
    {
        const TemporaryMachine folder;
        FileSettingsStore store(folder.folder() +
                                u"/machine.json/below/settings.json"_qs); // a file in the way
        Settings settings(store);
        QVERIFY(!settings.store(setting<"cpuRed">, 50) && !settings.add(setting<"weeklyBytesFreed">, 1));
        QVERIFY(settings.unset(setting<"cpuRed">)); // it is absent, as asked
        QVERIFY(settings.stored(setting<"cpuRed">).isUndefined());
    }
};

QTEST_GUILESS_MAIN(SettingsTest)
#include "SettingsTest.moc"
