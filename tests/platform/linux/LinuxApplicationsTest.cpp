#include "StandIn.h"
#include "platform/linux/ProgramFinder.h"
#include "support/Table.h"

#include <QtTest/QTest>

using namespace swabby;

namespace {

std::string entry(const std::string &name, const std::string &exec, const std::string &more = {})
{
    return "[Desktop Entry]\nType=Application\nName=" + name + "\nName[de]=Anders\nExec=" + exec + '\n' +
           more + "\n[Desktop Action new]\nName=New Window\nExec=other --new\n";
}

/// A machine with programs, desktop entries and processes.
class ApplicationMachine {
public:
    ApplicationMachine() { files.writeProgram("usr/bin/prog"); }

    void addEntry(const std::string &identifier, const std::string &text) const
    {
        files.write("usr/share/applications/" + identifier + ".desktop", text);
    }

    DesktopApplications applications() const
    {
        DesktopApplications result(
            {files.path("home/.local/share/applications"), files.path("usr/share/applications")},
            {files.path(), files.path("home"), {files.path("usr/bin"), files.path("snap/bin")}});
        result.refresh();
        return result;
    }

    /// The name of the application that a program under this machine's root belongs to.
    QByteArray nameFor(const std::string &program) const
    {
        return QByteArray::fromStdString(std::string(applications().nameFor(files.path(program))));
    }

    StandIn files;
};

} // namespace

class LinuxApplicationsTest : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void execLine()
    {
        compareTable(R"(
            field codes | prog %U --name=%c 100%% | <prog><--name=><100%>
            quotes | "/opt/My App/run" "a \\"b\\"" c | </opt/My App/run><a "b"><c>
            field codes in quotes stay | sh -c "echo %U" | <sh><-c><echo %U>
            empty argument | prog "" | <prog><>
            ends in the middle | prog \qa b\\ | <prog><a b\\>
            nothing | \s\s | )",
                     [](const Cells &row) {
                         QString words;
                         for (const std::string &word : execArguments(row.string(1)))
                             words += u'<' + QString::fromStdString(word) + u'>';
                         return words;
                     });
    }

    void whatAProgramBelongsTo()
    {
        const ApplicationMachine machine;
        for (const char *file :
             {"opt/google/chrome/google-chrome", "usr/bin/chromium", "usr/bin/editor", "usr/bin/make",
              "home/idea/bin/idea.sh", "home/Downloads/tool", "usr/bin/snap", "usr/bin/python3.11",
              "usr/bin/flatpak", "usr/bin/env", "opt/brave.com/brave/brave-browser"})
            machine.files.writeProgram(file);
        machine.files.write("usr/lib/chromium/chromium", "");
        machine.files.write("usr/lib/python3.11/os.py", "");
        machine.files.link("usr/bin/google-chrome-stable",
                           machine.files.path("opt/google/chrome/google-chrome"));
        machine.files.link("usr/bin/python3", "python3.11");
        machine.files.link("snap/bin/mail", machine.files.path("usr/bin/snap"));
        const std::string root = machine.files.path();
        machine.addEntry("google-chrome", entry("Google Chrome", "google-chrome-stable %U"));
        machine.addEntry("chromium",
                         entry("Chromium Web Browser", "env A=b " + root + "/usr/bin/chromium %U"));
        machine.addEntry("editor", entry("Text Editor", "editor"));
        machine.addEntry("idea", entry("Idea", '"' + root + "/home/idea/bin/idea.sh\" %f"));
        machine.addEntry("tool", entry("Tool", root + "/home/Downloads/tool"));
        machine.addEntry("mail_mail", entry("Mail", "env BAMF=x " + root + "/snap/bin/mail %u"));
        machine.addEntry("script", entry("Script", "python3 " + root + "/home/script.py"));
        machine.addEntry("org.sandbox", entry("Sandbox", "flatpak run org.sandbox", "X-Flatpak=org.sandbox"));
        machine.addEntry("brave", entry("Brave Web Browser", root + "/opt/brave.com/brave/brave-browser"));
        compareTable(fixture(u"linux/what_a_program_belongs_to.txt"_qs),
                     [&](const Cells &row) { return QString::fromUtf8(machine.nameFor(row.string(1))); });
    }

    void entriesThatMakeNoApplication()
    {
        for (const std::string &text :
             {entry("X", "prog", "Hidden=true"), entry("X", "prog", "NoDisplay=true"),
              entry("X", "prog", "Terminal=true"),
              std::string("[Desktop Entry]\nType=Link\nName=X\nExec=prog\n"),
              std::string("[Desktop Entry]\nType=Application\nExec=prog\n"), entry("X", "progg"),
              entry("X", "", "[Desktop Action a]\nExec=prog"),
              std::string("Exec=prog\nName=X\nType=Application")}) {
            const ApplicationMachine machine;
            machine.addEntry("x", text);
            QVERIFY2(machine.nameFor("usr/bin/prog").isEmpty(), text.c_str());
        }
    }

    void usersEntryWins()
    {
        const ApplicationMachine machine;
        machine.addEntry("prog", entry("System name", "prog"));
        machine.files.write("home/.local/share/applications/prog.desktop", entry("My name", "prog"));
        QCOMPARE(machine.nameFor("usr/bin/prog"), "My name");
        machine.files.write("home/.local/share/applications/prog.desktop",
                            entry("My name", "prog", "Hidden=true"));
        QCOMPARE(machine.nameFor("usr/bin/prog"), "");
    }

    void pagesOnTheMenuDoNotRenameTheBrowser()
    {
        const ApplicationMachine machine;
        machine.files.writeProgram("opt/browser/start");
        const std::string start = machine.files.path("opt/browser/start");
        machine.addEntry("a-page", entry("Some Page", start + " --app=https://example.org"));
        machine.addEntry("browser", entry("Browser", start + " %U"));
        machine.addEntry("c-page", entry("Other Page", start + " --profile=a --app=b"));
        QCOMPARE(machine.nameFor("opt/browser/start"), "Browser");
        QCOMPARE(machine.nameFor("opt/browser/engine"), "Browser");
    }

    void changedFolderIsReadAgain()
    {
        const ApplicationMachine machine;
        machine.addEntry("other", entry("Other", "other"));
        DesktopApplications applications = machine.applications();
        QVERIFY(!applications.refresh());
        machine.files.write("home/.local/share/applications/prog.desktop", entry("Prog", "prog"));
        QVERIFY(applications.refresh());
        QCOMPARE(applications.nameFor(machine.files.path("usr/bin/prog")), "Prog");
    }

    void controlGroups()
    {
        const ApplicationMachine machine;
        machine.addEntry("org.sandbox.Mail", entry("Mail", "mail"));
        machine.addEntry("my-tool", entry("My Tool", "tool"));
        const DesktopApplications applications = machine.applications();
        compareTable(fixture(u"linux/control_groups.txt"_qs), [&](const Cells &row) {
            const QByteArray slice = "0::/user.slice/user@1000.service/app.slice";
            const std::string group = row[1].replace("SLICE", slice).toStdString();
            return QString::fromStdString(std::string(applications.nameForControlGroup(group)));
        });
    }

    void processes()
    {
        // Its exe link and its arguments; its path and its name.
        compareTable(R"(
            plain | /usr/sbin/cupsd | cupsd\0-l | /usr/sbin/cupsd cupsd
            replaced while it runs | /usr/bin/tool (deleted) | | /usr/bin/tool tool
            somebody else's | | /usr/lib/x/daemon\0--run | /usr/lib/x/daemon daemon
            somebody else's with a title | | sshd: user@pts/0 | comm comm
            ended, not collected | | | comm comm
            of the kernel | | | [comm] comm)",
                     [](const Cells &row) {
                         const StandIn proc;
                         proc.write("7/cmdline", row.string(2));
                         if (!row[1].isEmpty())
                             proc.link("7/exe", row.string(1));
                         ProcessStat stat;
                         stat.command = "comm";
                         stat.isKernelThread = row[0] == "of the kernel";
                         const auto program =
                             ProgramFinder(proc.path(), DesktopApplications({}, {})).find(7, stat, nullptr);
                         return QString::fromStdString(program->path + ' ' + program->name) +
                                (program->isApp ? u" app"_qs : QString());
                     });
    }

    void helpersBelongToTheirApplication()
    {
        const StandIn proc;
        const ProgramFinder finder(proc.path(), DesktopApplications({}, {}));
        const Program browser = {"/usr/bin/browser", "Web", {}, true};
        const Program shell = {"/usr/bin/bash", "bash", {}, false};
        const auto nameOf = [&](const char *executable, const Program *parent) {
            proc.link("8/exe", executable);
            return finder.find(8, {}, parent)->name;
        };
        QCOMPARE(nameOf("/usr/lib/x86_64-linux-gnu/engine/Renderer", &browser), "Web");
        QCOMPARE(nameOf("/usr/libexec/helper", &browser), "Web");
        QCOMPARE(nameOf("/usr/bin/make", &browser), "make");
        QCOMPARE(nameOf("/usr/lib/git-core/git", &shell), "git");
        QCOMPARE(nameOf("/usr/lib/jvm/bin/java", &browser), "java");
    }

    void scriptsOfInterpreters()
    {
        const ApplicationMachine machine;
        machine.files.writeProgram("usr/bin/tweaks");
        machine.addEntry("tweaks", entry("Tweaks", "tweaks"));
        const StandIn proc;
        const ProgramFinder finder(proc.path(), machine.applications());
        const auto find = [&](const std::string &arguments) {
            proc.link("8/exe", "/usr/bin/python3.11");
            proc.write("8/cmdline", arguments);
            return finder.find(8, {}, nullptr);
        };
        const std::string script = machine.files.path("usr/bin/tweaks");
        const auto application = find(std::string("python3\0-I\0", 11) + script);
        QCOMPARE(application->name, "Tweaks");
        QCOMPARE(application->script, script);
        QVERIFY(application->isApp);
        QCOMPARE(find(std::string("python3\0", 8) + machine.files.path("usr/bin/else"))->name, "python3.11");
        QVERIFY(!find("python3")->isApp);
        QVERIFY(!find("")->isApp);
    }
};

QTEST_APPLESS_MAIN(LinuxApplicationsTest)
#include "LinuxApplicationsTest.moc"
