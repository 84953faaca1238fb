#include "StandIn.h"
#include "platform/linux/LinuxStartupSource.h"
#include "support/Table.h"

#include <QtTest/QTest>

using namespace swabby;

namespace {

/// A machine with startup items, seen as this user's with this desktop running.
class StartupMachine {
public:
    StartupMachine() { files.writeProgram("usr/bin/prog"); }

    LinuxStartupSource source(const std::string &desktops = "GNOME:GNOME-Classic")
    {
        LinuxStartupSource::Sources sources;
        sources.autostart = {files.path("home/.config/autostart"),
                             {files.path("etc/xdg-mine/autostart"), files.path("etc/xdg/autostart")},
                             desktops};
        sources.units = {files.path("home/.config/systemd/user"), files.path("etc/systemd/user"),
                         files.path("etc/systemd/system")};
        sources.programs = {
            files.path(), files.path("home"), {files.path("usr/local/bin"), files.path("usr/bin")}};
        sources.pidRunning = [this](const std::string &program, const std::string &folder) {
            asked += program + ' ' + folder + ';';
            return program == running ? 4711 : 0;
        };
        return LinuxStartupSource(std::move(sources));
    }

    /// The entries one a line: scope, label, program and flags (missing, vendor, loaded).
    QString list(const std::string &desktops = "GNOME")
    {
        return lines(source(desktops).entries(), [&](const StartupEntry &entry) {
            QString program = entry.programPath;
            return QString::number(static_cast<int>(entry.scope)) + u'|' + entry.label + u'|' +
                   program.remove(QString::fromStdString(files.path())) + u'|' +
                   (entry.programIsMissing ? u"m"_qs : QString()) +
                   (entry.isVendorSigned ? u"v"_qs : QString()) + (entry.isLoaded ? u"l"_qs : QString());
        });
    }

    void autostart(const std::string &file, const std::string &name, const std::string &exec,
                   const std::string &more = {}) const
    {
        files.write(file, "[Desktop Entry]\nType=Application\nName=" + name + "\nExec=" + exec + '\n' + more);
    }

    /// Defines a unit and links it where it is enabled.
    void unit(const std::string &definition, const std::string &link, const std::string &text) const
    {
        files.write(definition, text);
        files.link(link, files.path(definition));
    }

    StandIn files;
    std::string running;
    std::string asked;
};

} // namespace

class LinuxStartupTest : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void whatAnAutostartEntryStarts()
    {
        compareTable(fixture(u"linux/what_an_autostart_entry_starts.txt"_qs), [](const Cells &row) {
            StartupMachine machine;
            machine.autostart("home/.config/autostart/a.desktop", "A", "prog", row.string(1));
            return machine.list();
        });
    }

    void autostartScopesAndFacts()
    {
        StartupMachine machine;
        machine.files.writeProgram("opt/cloud/cloud");
        machine.files.write("home/tray.py", "");
        machine.autostart("home/.config/autostart/b.desktop", "Cloud",
                          '"' + machine.files.path("opt/cloud/cloud") + "\" --tray");
        machine.autostart("home/.config/autostart/a.desktop", "Gone", "gone --tray");
        machine.autostart("home/.config/autostart/c.desktop", "Script",
                          "env X=1 python3 " + machine.files.path("home/tray.py"));
        machine.autostart("home/.config/autostart/d.desktop", "", "prog");
        machine.autostart("home/.config/autostart/e.desktop.disabled", "Off", "prog");
        machine.autostart("etc/xdg/autostart/f.desktop", "System", "prog");
        machine.autostart("etc/xdg/autostart/g.desktop", "Other maker's",
                          machine.files.path("opt/cloud/cloud"));
        machine.autostart("etc/xdg-mine/autostart/g.desktop", "Admin's", "prog");
        QCOMPARE(machine.list(), u"0|Gone|gone|m\n0|Cloud|/opt/cloud/cloud|\n0|Script|/home/tray.py|\n"
                                 "0|d|/usr/bin/prog|\n1|Admin's|/usr/bin/prog|\n1|System|/usr/bin/prog|v"_qs);
        QCOMPARE(machine.source().entries().front().definitionPath,
                 QString::fromStdString(machine.files.path("home/.config/autostart/a.desktop")));
    }

    void usersEntryHidesTheSystemOne()
    {
        StartupMachine machine;
        machine.autostart("etc/xdg/autostart/a.desktop", "System", "prog");
        machine.autostart("home/.config/autostart/a.desktop", "Mine", "prog", "Hidden=true");
        QCOMPARE(machine.list(), u""_qs);
        machine.autostart("home/.config/autostart/a.desktop", "Mine", "prog");
        QCOMPARE(machine.list(), u"0|Mine|/usr/bin/prog|"_qs);
    }

    void desktopsOwnPartsAreNotListed()
    {
        StartupMachine machine;
        machine.autostart("etc/xdg/autostart/keyring.desktop", "Keyring", "prog", "NoDisplay=true");
        machine.autostart("etc/xdg/autostart/settings.desktop", "Settings", "prog",
                          "X-GNOME-Autostart-Phase=Initialization");
        machine.autostart("etc/xdg/autostart/unit.desktop", "Unit", "prog",
                          "X-GNOME-HiddenUnderSystemd=true");
        machine.autostart("home/.config/autostart/mine.desktop", "Mine", "prog", "NoDisplay=true");
        QCOMPARE(machine.list(), u"0|Mine|/usr/bin/prog|"_qs);
    }

    void runningAutostartProgram()
    {
        StartupMachine machine;
        machine.files.writeProgram("opt/cloud/bin/cloud");
        machine.files.writeProgram("usr/bin/flatpak");
        machine.files.link("usr/bin/cloud", machine.files.path("opt/cloud/bin/cloud"));
        machine.autostart("home/.config/autostart/a.desktop", "Cloud", "cloud");
        machine.autostart("home/.config/autostart/b.desktop", "Sandboxed", "flatpak run org.example");
        machine.running = machine.files.path("opt/cloud/bin/cloud");
        const auto entries = machine.source().entries();
        QCOMPARE(entries[0].pid, 4711);
        QVERIFY(entries[0].isLoaded);
        QVERIFY(!entries[1].isLoaded && !entries[1].pid);
        // What runs other programs is not asked about.
        QCOMPARE(machine.asked, machine.running + ' ' + machine.files.path("opt/cloud") + ';');
    }

    void unitScopesAndFacts()
    {
        StartupMachine machine;
        machine.files.writeProgram("usr/sbin/webd");
        machine.files.writeProgram("usr/local/bin/mined");
        machine.files.writeProgram("home/bin/sync");
        const std::string service = "[Unit]\nDescription=x\n[Service]\nExecStart=";
        machine.unit("usr/lib/systemd/system/web.service",
                     "etc/systemd/system/multi-user.target.wants/web.service",
                     service + machine.files.path("usr/sbin/webd") + " --run\n");
        machine.files.link("etc/systemd/system/graphical.target.wants/web.service",
                           machine.files.path("usr/lib/systemd/system/web.service"));
        machine.unit("etc/systemd/system/gone.service",
                     "etc/systemd/system/gone.target.requires/gone.service", service + "-/opt/gone/daemon\n");
        machine.unit("usr/lib/systemd/system/vpn@.service",
                     "etc/systemd/system/multi-user.target.wants/vpn@home.service",
                     service + "@webd vpn --config /etc/%i.conf\n");
        machine.unit("etc/systemd/user/all.service", "etc/systemd/user/default.target.wants/all.service",
                     service + "mined\n");
        machine.unit("home/.config/systemd/user/sync@.service",
                     "home/.config/systemd/user/default.target.wants/sync@photos.service",
                     service + "%h/bin/sync %i\n");
        machine.unit("home/.config/systemd/user/backup.timer",
                     "home/.config/systemd/user/timers.target.wants/backup.timer",
                     "[Timer]\nOnCalendar=daily\n");
        machine.files.write("home/.config/systemd/user/backup.service", service + "%h/bin/backup\n");
        QCOMPARE(machine.list(), u"0|sync@photos.service|/home/bin/sync|\n0|backup.timer|/home/bin/backup|m\n"
                                 "1|all.service|/usr/local/bin/mined|\n2|gone.service|/opt/gone/daemon|m\n"
                                 "2|web.service|/usr/sbin/webd|v\n2|vpn@home.service|/usr/sbin/webd|v"_qs);
        QCOMPARE(machine.source().entries().front().definitionPath,
                 QString::fromStdString(machine.files.path(
                     "home/.config/systemd/user/default.target.wants/sync@photos.service")));
    }

    void unitsThatAreNotListed()
    {
        StartupMachine machine;
        const std::string wants = "etc/systemd/system/multi-user.target.wants/";
        const std::string service = "[Service]\nExecStart=" + machine.files.path("usr/bin/prog") + '\n';
        for (const char *name : {"systemd-timesyncd.service", "getty@tty1.service", "NetworkManager.service",
                                 "e2scrub_reap.service", "fstrim.timer"})
            machine.unit(std::string("usr/lib/systemd/system/") + name, wants + name, service);
        machine.files.write("usr/lib/systemd/system/fstrim.service", service);
        machine.unit("etc/systemd/system/empty.service", wants + "empty.service",
                     "[Service]\nType=oneshot\n");
        machine.unit("etc/systemd/system/socket.socket", wants + "socket.socket", "[Socket]\n");
        machine.files.link(wants + "masked.service", "/dev/null");
        machine.files.link(wants + "removed.service", "/nowhere/removed.service");
        machine.unit("etc/systemd/system/asleep.service", "etc/systemd/system/asleep.service.bak", service);
        QCOMPARE(machine.list(), u""_qs);

        // Only the system's own ones are passed over: under the same name somebody else's shows.
        machine.unit("etc/systemd/system/systemd-miner.service", wants + "systemd-miner.service", service);
        QCOMPARE(machine.list(), u"2|systemd-miner.service|/usr/bin/prog|"_qs);
    }

    void unitFiles()
    {
        compareTable(
            R"(
            first of several | [Service]\nExecStartPre=/a\nExecStart=/b c\nExecStart=/d\n | /b c
            taken back | ExecStart=/b\nExecStart=\nExecStart=/d\n | /d
            continued lines | ExecStart=/b \\\n # why\n  c \\\n  d\nType=x | /b  c  d
            comments | #ExecStart=/a\n;ExecStart=/b\n ExecStart = /c | /c
            no unit | \0\xff\n=\n[ |)",
            [](const Cells &row) { return QString::fromStdString(unitFileFrom(row.string(1)).command); });
        compareTable(
            R"(
            signs in front | -+!!/usr/bin/a b | </usr/bin/a><b>
            placeholders | %h/%p %i %n 5%% | </home/me/vpn><home><vpn@home.service><5%>
            unknown one in an argument | /a %t/x | </a><%t/x>
            unknown one in the program | %t/a x |
            quoted | "/opt/my vpn/run" x | </opt/my vpn/run><x>
            nothing | - |)",
            [](const Cells &row) {
                QString words;
                for (const std::string &word : unitCommand(row.string(1), {"vpn@home.service", "/home/me"}))
                    words += u'<' + QString::fromStdString(word) + u'>';
                return words;
            });
    }

    void changedFilesAreReadAgain()
    {
        StartupMachine machine;
        auto source = machine.source();
        machine.autostart("home/.config/autostart/a.desktop", "A", "/opt/one");
        QCOMPARE(source.entries().front().programPath, u"/opt/one"_qs);
        machine.files.writeProgram("opt/one");
        machine.autostart("home/.config/autostart/a.desktop", "A", "/opt/another");
        QCOMPARE(source.entries().front().programPath, u"/opt/another"_qs);
        machine.files.remove("home/.config/autostart/a.desktop");
        QVERIFY(source.entries().empty());
    }
};

QTEST_APPLESS_MAIN(LinuxStartupTest)
#include "LinuxStartupTest.moc"
