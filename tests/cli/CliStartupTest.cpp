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
            compareTranscript(machine, u"cli/startup_off.txt"_qs);
            QVERIFY(!has(machine, agents + u"mill.plist"_qs) &&
                    has(machine, agents + u"mill.plist.disabled"_qs));
            QCOMPARE(idOf(machine, "com.mill"), u"none"_qs);
            QCOMPARE(runOn(machine, "startup disabled --json").json()[0][u"id"_qs], id);
            const QJsonArray bootout = {u"/bin/launchctl"_qs, u"bootout"_qs, u"gui/502/com.mill"_qs};
            QCOMPARE(machine.events(u"run"_qs).contains(bootout), !launchctl.isEmpty());

            compareTranscript(machine, u"cli/startup_on.txt"_qs);
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
        const QJsonValue old = runOn(machine, "startup disabled --json").json();
        QCOMPARE(old[0][u"label"_qs], u"com.old"_qs);
        compareTranscript(machine, u"cli/startup_in_the_way.txt"_qs);
        QVERIFY(idOf(machine, "com.mill") != u"none");
        QCOMPARE(runOn(machine, "startup disabled --json").json(), old);
    }

    void onlyAgentsOfTheUserAreTouched()
    {
        TemporaryMachine machine;
        machine.addTool(u"/bin/launchctl"_qs, "exit 0");
        machine.addTool(u"/usr/bin/osascript"_qs, "echo Classic");
        machine.writeFile(u"root/Library/LaunchAgents/a.plist"_qs, job("com.global"));
        machine.writeFile(u"root/Library/LaunchDaemons/d.plist"_qs, job("com.daemon"));
        compareTranscript(machine, u"cli/startup_of_others.txt"_qs);
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
        compareTranscript(TemporaryMachine(), u"cli/startup_without_the_item.txt"_qs);
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
