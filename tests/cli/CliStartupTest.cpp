#include "Terminal.h"
#include "startup/LoginAtLogin.h"

#include <QtTest/QTest>

using namespace swabby;

namespace {

QByteArray job(const char *label)
{
    return QByteArray("<plist version=\"1.0\"><dict><key>Label</key><string>") + label +
           "</string><key>Program</key><string>/gone</string></dict></plist>";
}

const QString agents = u"home/Library/LaunchAgents/"_qs;

bool has(const TemporaryMachine &machine, const QString &file)
{
    return QFile::exists(machine.folder() + u'/' + file);
}

/// The id of the item with that label.
QString idOf(const TemporaryMachine &machine, const char *label)
{
    for (const QJsonValue item : runOn(machine, "startup --json").json().toArray())
        if (item[u"label"_qs] == QLatin1String(label))
            return item[u"id"_qs].toString();
    return u"none"_qs;
}

} // namespace

class CliStartupTest : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void anAgentIsTurnedOffAndOn()
    {
        // Loaded, not loaded, and no launchctl.
        for (const QByteArray launchctl :
             {"exit 0", "echo 'Boot-out failed: 3: No such process' >&2; exit 3", ""}) {
            TemporaryMachine machine(QJsonObject{{u"userID"_qs, 502}});
            machine.writeFile(agents + u"mill.plist"_qs, job("com.mill"));
            if (!launchctl.isEmpty())
                machine.addTool(u"/bin/launchctl"_qs, launchctl);
            const QString id = idOf(machine, "com.mill");
            const Answer off = runOn(machine, {u"startup"_qs, u"disable"_qs, id, u"--json"_qs});
            QCOMPARE(off.status, 0);
            QCOMPARE(off.json().toObject(), (QJsonObject{{u"disabled"_qs, true}}));
            QVERIFY(!has(machine, agents + u"mill.plist"_qs) &&
                    has(machine, agents + u"mill.plist.disabled"_qs));
            QCOMPARE(idOf(machine, "com.mill"), u"none"_qs);
            QCOMPARE(runOn(machine, "startup disabled --json").json()[0][u"id"_qs], id);
            const QJsonArray bootout = {u"/bin/launchctl"_qs, u"bootout"_qs, u"gui/502/com.mill"_qs};
            QCOMPARE(machine.events(u"run"_qs).contains(bootout), !launchctl.isEmpty());

            QCOMPARE(runOn(machine, {u"startup"_qs, u"enable"_qs, id, u"--json"_qs}).json()[u"enabled"_qs],
                     true);
            QVERIFY(has(machine, agents + u"mill.plist"_qs) &&
                    !has(machine, agents + u"mill.plist.disabled"_qs));
            const QJsonArray bootstrap = {u"/bin/launchctl"_qs, u"bootstrap"_qs, u"gui/502"_qs,
                                          machine.folder() + u'/' + agents + u"mill.plist"_qs};
            QCOMPARE(machine.events(u"run"_qs).contains(bootstrap), !launchctl.isEmpty());
        }
    }

    void nothingIsReplaced()
    {
        TemporaryMachine machine;
        machine.writeFile(agents + u"mill.plist"_qs, job("com.mill"));
        machine.writeFile(agents + u"mill.plist.disabled"_qs, job("com.old"));
        const Answer off =
            runOn(machine, {u"startup"_qs, u"disable"_qs, idOf(machine, "com.mill"), u"--json"_qs});
        QCOMPARE(off.status, 1);
        QCOMPARE(off.json().toObject(), (QJsonObject{{u"disabled"_qs, false}}));
        const QJsonValue old = runOn(machine, "startup disabled --json").json()[0];
        QCOMPARE(old[u"label"_qs], u"com.old"_qs);
        QCOMPARE(runOn(machine, {u"startup"_qs, u"enable"_qs, old[u"id"_qs].toString()}).status, 1);
        QVERIFY(idOf(machine, "com.mill") != u"none");
        QCOMPARE(runOn(machine, "startup disabled --json").json()[0], old);
    }

    void onlyAgentsOfTheUserAreTouched()
    {
        TemporaryMachine machine;
        machine.addTool(u"/bin/launchctl"_qs, "exit 0");
        machine.addTool(u"/usr/bin/osascript"_qs, "echo Classic");
        machine.writeFile(u"root/Library/LaunchAgents/a.plist"_qs, job("com.global"));
        machine.writeFile(u"root/Library/LaunchDaemons/d.plist"_qs, job("com.daemon"));
        for (const char *label : {"com.global", "com.daemon", "Classic"}) {
            const QString id = idOf(machine, label);
            QVERIFY2(id != u"none", label);
            const Answer off = runOn(machine, {u"startup"_qs, u"disable"_qs, id, u"--json"_qs});
            QCOMPARE(off.status, 1);
            QCOMPARE(off.json().toObject(), (QJsonObject{{u"disabled"_qs, false}}));
            const Answer shown = runOn(machine, {u"startup"_qs, u"reveal"_qs, id, u"--json"_qs});
            const bool hasFile = QLatin1String(label) != u"Classic";
            QCOMPARE(shown.json().toObject(), (QJsonObject{{u"revealed"_qs, hasFile}}));
            QCOMPARE(shown.status, hasFile ? 0 : 1);
        }
        QVERIFY(has(machine, u"root/Library/LaunchAgents/a.plist"_qs) &&
                has(machine, u"root/Library/LaunchDaemons/d.plist"_qs));
        for (const QJsonValue run : machine.events(u"run"_qs))
            QVERIFY(run[1] != u"bootout"_qs);
        QCOMPARE(machine.events(u"reveal"_qs),
                 (QJsonArray{machine.folder() + u"/root/Library/LaunchAgents/a.plist"_qs,
                             machine.folder() + u"/root/Library/LaunchDaemons/d.plist"_qs}));
    }

    void whatIsNotThereIsNotDone()
    {
        TemporaryMachine machine;
        using Row = std::pair<const char *, const char *>;
        for (const auto &[word, key] :
             {Row{"disable", "disabled"}, Row{"enable", "enabled"}, Row{"reveal", "revealed"}}) {
            const Answer answer =
                runOn(machine, {u"startup"_qs, QLatin1String(word), u"userAgent:x"_qs, u"--json"_qs});
            QCOMPARE(answer.status, 1);
            QCOMPARE(answer.json().toObject(), (QJsonObject{{QLatin1String(key), false}}));
            QCOMPARE(runOn(machine, {u"startup"_qs, QLatin1String(word)}).status, 2);
        }
        QCOMPARE(runOn(machine, "startup frob x").status, 2);
    }

    void openingAtLoginIsRegisteredOnce()
    {
        TemporaryMachine folder;
        const auto machine = folder.open();
        for (const bool enabled : {true, true, false, false})
            LoginAtLogin::setEnabled(enabled, *machine->login);
        QCOMPARE(folder.events(u"loginAtLogin"_qs), (QJsonArray{true, false, false}));
        machine->workspace->openLoginItemSettings();
        QCOMPARE(folder.events(u"open"_qs),
                 (QJsonArray{u"x-apple.systempreferences:com.apple.LoginItems-Settings.extension"_qs}));
    }
};

QTEST_GUILESS_MAIN(CliStartupTest)
#include "CliStartupTest.moc"
