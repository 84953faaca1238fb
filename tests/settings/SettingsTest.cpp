#include "settings/Settings.h"
#include "platform/posix/FileSettingsStore.h"
#include "support/Table.h"
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

} // namespace

class SettingsTest : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void storedValues()
    {
        compareTable(fixture(u"settings/stored_values.txt"_qs), [](const Cells &row) {
            const TemporaryMachine folder;
            folder.writeFile(fileName, "{\"" + row[0] + "\":" + row[1] + '}');
            const auto machine = folder.open();
            return textOf(Settings(*machine->settings).effective(*Settings::find(row.text(0))));
        });
    }

    void givenAsText()
    {
        compareTable(fixture(u"settings/given_as_text.txt"_qs), [](const Cells &row) {
            return textOf(Settings::parse(*Settings::find(row.text(0)), row.text(1)));
        });
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
