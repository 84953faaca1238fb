#include "platform/linux/LinuxStartupControl.h"
#include "PrivateBus.h"
#include "platform/linux/DesktopEntry.h"
#include "platform/linux/LinuxLoginService.h"
#include "startup/LoginAtLogin.h"
#include "support/TemporaryMachine.h"

#include <QtDBus/QDBusConnection>
#include <QtDBus/QDBusMessage>
#include <QtDBus/QDBusObjectPath>
#include <QtDBus/QDBusVirtualObject>

#include <future>

using namespace swabby;
using namespace std::chrono_literals;

namespace {

/// Keeps what the service manager is told.
class StandInManager : public QDBusVirtualObject {
public:
    QString introspect(const QString &) const override { return {}; }
    bool handleMessage(const QDBusMessage &message, const QDBusConnection &connection) override
    {
        told.append(message.member() + u' ' + message.arguments().value(0).toString() + u' ' +
                    message.arguments().value(1).toString());
        return connection.send(
            message.createReply(QVariant::fromValue(QDBusObjectPath(u"/org/freedesktop/systemd1/job/1"_qs))));
    }

    QStringList told;
};

QString textOfFile(const StandIn &files, const std::string &name)
{
    QFile file(QString::fromStdString(files.path(name)));
    return file.open(QIODevice::ReadOnly) ? QString::fromUtf8(file.readAll()) : u"none"_qs;
}

LinuxStartupControl controlOf(const StandIn &files, const std::string &bus = {})
{
    return LinuxStartupControl(
        {files.path("user"), {files.path("system")}, files.path("units"), bus, "/usr/bin/swabby"},
        StopToken());
}

QString pathIn(const StandIn &files, const std::string &name)
{
    return QString::fromStdString(files.path(name));
}

bool isLink(const StandIn &files, const std::string &name)
{
    return std::filesystem::is_symlink(files.path(name));
}

} // namespace

class LinuxStartupControlTest : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void anEntryIsSetAsideAndPutBack()
    {
        const StandIn files;
        files.plant("user/mill.desktop | The Mill | mill");
        LinuxStartupControl control = controlOf(files);
        const QString path = pathIn(files, "user/mill.desktop");
        const QString before = textOfFile(files, "user/mill.desktop");
        QVERIFY(control.setAside(path));
        QCOMPARE(textOfFile(files, "user/mill.desktop"), u"none"_qs);
        const auto aside = control.setAsideEntries();
        QCOMPARE(aside.size(), std::size_t{1});
        QCOMPARE(aside.front().label, u"The Mill"_qs);
        QCOMPARE(aside.front().definitionPath, path);

        // Never over something, whichever way.
        files.write("user/mill.desktop", "new");
        QVERIFY(!control.putBack(path) && !control.setAside(path));
        QCOMPARE(textOfFile(files, "user/mill.desktop"), u"new"_qs);
        QCOMPARE(textOfFile(files, "user/mill.desktop.disabled"), before);
        files.remove("user/mill.desktop");
        QVERIFY(control.putBack(path));
        QCOMPARE(textOfFile(files, "user/mill.desktop"), before);
        QVERIFY(control.setAsideEntries().empty());
    }

    void aSystemTwinDoesNotStartInItsPlace()
    {
        const StandIn files;
        files.plant("system/mill.desktop | Mill | /usr/bin/mill\nuser/mill.desktop | Mill | mill");
        LinuxStartupControl control = controlOf(files);
        const QString path = pathIn(files, "user/mill.desktop");
        const QString before = textOfFile(files, "user/mill.desktop");
        QVERIFY(control.setAside(path));
        QVERIFY(desktopEntryFrom(textOfFile(files, "user/mill.desktop").toStdString()).isHidden);
        QVERIFY(control.putBack(path));
        QCOMPARE(textOfFile(files, "user/mill.desktop"), before);
        QVERIFY(!control.putBack(path)); // nothing is aside: the entry stays as well
        QCOMPARE(textOfFile(files, "user/mill.desktop"), before);
    }

    void aSystemEntryIsTurnedOffByAnOverride()
    {
        // What the user has of that name before, what stands in the override later where it says that it is
        // hidden, what is listed as turned off then, and what the user has when it was turned on again.
        compareTable(fixture(u"linux/autostart_overrides.txt"_qs), [](const Cells &row) {
            const StandIn files;
            files.plant("system/mill.desktop | Mill | mill | Hidden=false\\nOnlyShowIn=KDE;\\nIcon=wheel");
            if (!row[1].isEmpty())
                files.plant("user/mill.desktop | " + row[1]);
            LinuxStartupControl control = controlOf(files);
            const QString path = pathIn(files, "system/mill.desktop");
            const QString before = textOfFile(files, "user/mill.desktop");
            if (!control.setAside(path))
                return textOfFile(files, "user/mill.desktop") == before ? u"refused"_qs : u"changed"_qs;
            const QString copy = textOfFile(files, "user/mill.desktop");
            const DesktopEntry hidden = desktopEntryFrom(copy.toStdString());
            if (!hidden.isHidden || hidden.onlyShowIn != "KDE;" || hidden.exec != "mill")
                return copy;
            if (!row[2].isEmpty())
                files.write("user/mill.desktop",
                            QString(copy).replace(u"Hidden=true"_qs, row.text(2)).toStdString());
            const QString off = lines(control.setAsideEntries(), [&](const StartupEntry &entry) {
                return entry.label + u' ' + entry.icon + (entry.definitionPath == path ? u""_qs : u"?"_qs);
            });
            const bool isOn = control.putBack(path);
            const QString after = textOfFile(files, "user/mill.desktop");
            return (off + (isOn ? u" on "_qs : u" stays "_qs) +
                    after.section(u'\n', 0, 1).section(u'=', 0, 0).replace(u'\n', u' '))
                .trimmed();
        });
    }

    void swabbyHasOneSwitch()
    {
        const StandIn files;
        LinuxStartupControl control = controlOf(files);
        LinuxLoginService login(files.path("user"), {files.path("system")}, "/usr/bin/swabby");
        const char *const mine = "[Desktop Entry]\nType=Application\nName=Swabby\n"
                                 "Exec=env LANG=de /usr/bin/swabby --background\nX-Mine=1\n";
        for (const std::string folder : {"user", "system"}) {
            files.remove("user");
            if (folder == "system")
                files.plant("system/com.swabby.app.desktop | Swabby | swabby --background");
            else
                LoginAtLogin::setEnabled(true, login);
            const QString entry = pathIn(files, folder + "/com.swabby.app.desktop");
            for (const bool isOnThePage : {true, false}) {
                QVERIFY(login.isEnabled() && control.setAsideEntries().empty());
                if (folder == "user")
                    files.write("user/com.swabby.app.desktop", mine);
                if (isOnThePage)
                    QVERIFY(control.setAside(entry));
                else
                    LoginAtLogin::setEnabled(false, login);
                QVERIFY(!login.isEnabled());
                QCOMPARE(lines(control.setAsideEntries(), [](const auto &off) { return off.label; }),
                         u"Swabby"_qs);
                if (isOnThePage)
                    QVERIFY(control.putBack(entry));
                else
                    LoginAtLogin::setEnabled(true, login);
                if (folder == "user")
                    QCOMPARE(textOfFile(files, "user/com.swabby.app.desktop"), QLatin1String(mine));
            }
        }
    }

    void aUnitGoesOutOfEveryTarget()
    {
        const StandIn files;
        const std::string link = "units/default.target.wants/mill.service";
        const std::string other = "units/graphical.target.requires/mill.service";
        files.plant(R"(mill.service | [Unit]\nDescription=The %n\n[Service]\nExecStart=/usr/bin/mill\n
                       units/default.target.wants/mill.service | -> ROOT/mill.service
                       units/graphical.target.requires/mill.service | -> ROOT/mill.service
                       units/default.target.wants/gone.timer | -> ROOT/gone)");
        LinuxStartupControl control = controlOf(files);
        QVERIFY(control.setAside(pathIn(files, link)));
        QVERIFY(!isLink(files, link) && !isLink(files, other));
        QVERIFY(control.setAside(pathIn(files, "units/default.target.wants/gone.timer")));
        QStringList labels = lines(control.setAsideEntries(), [](const StartupEntry &entry) {
                                 return entry.label;
                             }).split(u'\n');
        labels.sort();
        QCOMPARE(labels, QStringList({u"The mill.service"_qs, u"gone.timer"_qs}));
        QVERIFY(control.putBack(pathIn(files, link)));
        QVERIFY(isLink(files, link) && isLink(files, other));
        QVERIFY(!isLink(files, other + ".disabled"));
    }

    void onlyUnitsAreStoppedAndStarted()
    {
        PrivateBus bus;
        if (bus.address.empty())
            QSKIP("no message bus on this machine");
        StandInManager manager;
        QDBusConnection connection =
            QDBusConnection::connectToBus(QString::fromStdString(bus.address), u"manager"_qs);
        QVERIFY(connection.registerVirtualObject(u"/org/freedesktop/systemd1"_qs, &manager) &&
                connection.registerService(u"org.freedesktop.systemd1"_qs));
        const StandIn files;
        const auto change = std::async(std::launch::async, [&] {
            LinuxStartupControl control = controlOf(files, bus.address);
            const QString link = pathIn(files, "units/default.target.wants/mill.service");
            control.endJob(u"The mill"_qs, link);
            control.beginJob(link);
            control.endJob(u"Mill"_qs, pathIn(files, "user/mill.desktop"));
            control.beginJob(pathIn(files, "user/mill.desktop"));
        });
        QVERIFY(waitUntil([&] { return change.wait_for(0s) == std::future_status::ready; }));
        QCOMPARE(manager.told,
                 QStringList({u"StopUnit mill.service replace"_qs, u"StartUnit mill.service replace"_qs}));
        controlOf(files, "unix:path=/nowhere")
            .endJob(u"mill.service"_qs, pathIn(files, "units/a/mill.service"));
    }

    void anyPathOpensAtLogin()
    {
        for (const std::string path :
             {"/usr/bin/swabby", "/opt/two words/swabby", "/opt/100%/%u/swabby", "/opt/\"quoted\"/swabby",
              "/opt/back\\slash\\\\/swabby", "/opt/$HOME/`id`/swabby", "/opt/ünï/swabby",
              "/opt/'single';#&|<>~*?()/swabby"}) {
            const StandIn files;
            LinuxLoginService service(files.path("new/autostart"), {files.path("system")}, path);
            QVERIFY(!service.isEnabled());
            LoginAtLogin::setEnabled(true, service);
            QVERIFY(service.isEnabled());
            const DesktopEntry entry =
                desktopEntryFrom(textOfFile(files, "new/autostart/com.swabby.app.desktop").toStdString());
            QCOMPARE(execArguments(entry.exec), (std::vector<std::string>{path, "--background"}));
            QCOMPARE(entry.tryExec, path);
            LinuxLoginService moved(files.path("new/autostart"), {}, "/usr/bin/other");
            QVERIFY(!moved.isEnabled());
            LoginAtLogin::setEnabled(false, service);
            LoginAtLogin::setEnabled(false, service);
            QVERIFY(!service.isEnabled());
            QCOMPARE(textOfFile(files, "new/autostart/com.swabby.app.desktop"), u"none"_qs);
        }
    }

    void offIsOffWhereSwabbyIsInstalledForAll()
    {
        const StandIn files;
        files.write("system/com.swabby.app.desktop", "[Desktop Entry]\nType=Application\nExec=swabby\n");
        LinuxLoginService service(files.path("user"), {files.path("system")}, "/usr/bin/swabby");
        LoginAtLogin::setEnabled(false, service);
        QVERIFY(desktopEntryFrom(textOfFile(files, "user/com.swabby.app.desktop").toStdString()).isHidden);
        QVERIFY(!service.isEnabled());
        LoginAtLogin::setEnabled(true, service);
        QVERIFY(service.isEnabled());
    }

    void anEntryForAnotherDesktopStartsNothing()
    {
        for (const auto &[line, isOn] : {std::pair<std::string, bool>{"OnlyShowIn=Weaver;", false},
                                         {"NotShowIn=Mill;", false},
                                         {"OnlyShowIn=Weaver;Mill;", true},
                                         {"NotShowIn=Weaver;", true}}) {
            const StandIn files;
            files.write("user/com.swabby.app.desktop",
                        "[Desktop Entry]\nType=Application\nExec=swabby\nX-Mine=1\n" + line + '\n');
            LinuxLoginService service(files.path("user"), {}, "/usr/bin/swabby", "Loom:Mill");
            QCOMPARE(service.isEnabled(), isOn);
            LoginAtLogin::setEnabled(true, service);
            QVERIFY(service.isEnabled());
            QVERIFY(textOfFile(files, "user/com.swabby.app.desktop").contains(u"X-Mine=1"_qs));
        }
    }

    void aFailureIsLogged()
    {
        const StandIn files;
        files.write("file", {});
        LinuxLoginService service(files.path("file/autostart"), {}, "/usr/bin/swabby");
        QTest::ignoreMessage(QtWarningMsg, QRegularExpression(u"^LoginAtLogin error: .+"_qs));
        LoginAtLogin::setEnabled(true, service);
    }
};

QTEST_GUILESS_MAIN(LinuxStartupControlTest)
#include "LinuxStartupControlTest.moc"
