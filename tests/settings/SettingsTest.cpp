#include "settings/Settings.h"
#include "platform/posix/FileSettingsStore.h"
#include "support/Table.h"
#include "support/TemporaryMachine.h"

#include <QtCore/QDir>
#include <QtCore/QFile>
#include <QtCore/QJsonArray>
#include <QtCore/QJsonDocument>
#include <QtTest/QTest>

#include <sys/stat.h>

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

    void whatHasToStayIsKnownOrNothingGoes()
    {
        // The file's text, or what is there in its place; then the paths, or why nobody knows them.
        compareTable(fixture(u"settings/what_has_to_stay.txt"_qs), [](const Cells &row) {
            const TemporaryMachine folder;
            folder.writeFile(fileName, row[0]);
            const QString path = folder.folder() + u'/' + fileName;
            const bool isReplaced = row[0].startsWith("a ") && QFile::remove(path);
            if (row[0] == "a pipe")
                ::mkfifo(qPrintable(path), 0600);
            else if (row[0] == "a folder")
                QDir().mkdir(path);
            else if (row[0] == "a device" || row[0] == "a dead link")
                QFile::link(row[0] == "a device" ? u"/dev/zero"_qs : u"/nowhere/at/all"_qs, path);
            else if (row[0] == "a large file")
                folder.writeFile(fileName, '"' + QByteArray(4'000'000, ' '));
            const auto machine = folder.open();
            Settings settings(*machine->settings);
            const auto [paths, problem] = settings.neverRemove(u"/home/me"_qs);
            // What cannot be read takes nothing, and neither does a list that is none.
            const bool isRight = settings.problem().isEmpty() == settings.store(setting<"cpuRed">, 50) &&
                                 problem.isEmpty() == settings.setNeverRemoved(u"/more"_qs, true) &&
                                 (settings.problem().isEmpty() || isReplaced || contentOf(folder) == row[0]);
            const QString said = QString(problem).replace(path, u"FILE"_qs).section(u';', 0, 0);
            return isRight ? paths.join(u' ') + said : u"wrong"_qs;
        });
    }

    void whatIsMendedIsReadAgain()
    {
        const TemporaryMachine folder;
        const auto machine = folder.open();
        const Settings settings(*machine->settings);
        for (const bool isMended : {false, true, false, true}) {
            folder.writeFile(fileName,
                             isMended ? R"({"neverRemove": ["/x"]} )" : R"({"neverRemove": ["/x"],})");
            QCOMPARE(settings.neverRemove({}).problem.isEmpty(), isMended);
            QCOMPARE(settings.neverRemove({}).paths, isMended ? QStringList(u"/x"_qs) : QStringList());
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
