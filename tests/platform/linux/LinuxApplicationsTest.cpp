#include "StandIn.h"
#include "platform/linux/ProgramFinder.h"

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
    std::string nameFor(const std::string &program) const
    {
        return std::string(applications().nameFor(files.path(program)));
    }

    StandIn files;
};

} // namespace

class LinuxApplicationsTest : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void execLine_data();
    void execLine();
    void whatAProgramBelongsTo_data();
    void whatAProgramBelongsTo();
    void entriesThatMakeNoApplication_data();
    void entriesThatMakeNoApplication();
    void usersEntryWins();
    void pagesOnTheMenuDoNotRenameTheBrowser();
    void changedFolderIsReadAgain();
    void controlGroups_data();
    void controlGroups();
    void processes_data();
    void processes();
    void helpersBelongToTheirApplication();
    void scriptsOfInterpreters();
};

void LinuxApplicationsTest::execLine_data()
{
    QTest::addColumn<QByteArray>("exec");
    QTest::addColumn<QStringList>("expected");
    QTest::newRow("field codes") << QByteArray("prog %U --name=%c 100%%")
                                 << QStringList{u"prog"_qs, u"--name="_qs, u"100%"_qs};
    QTest::newRow("quotes") << QByteArray(R"("/opt/My App/run" "a \"b\"" c)")
                            << QStringList{u"/opt/My App/run"_qs, u"a \"b\""_qs, u"c"_qs};
    QTest::newRow("field codes in quotes stay")
        << QByteArray(R"(sh -c "echo %U")") << QStringList{u"sh"_qs, u"-c"_qs, u"echo %U"_qs};
    QTest::newRow("empty argument") << QByteArray(R"(prog "")") << QStringList{u"prog"_qs, QString()};
    QTest::newRow("ends in the middle")
        << QByteArray(R"(prog "a b\)") << QStringList{u"prog"_qs, u"a b\\"_qs};
    QTest::newRow("nothing") << QByteArray("  ") << QStringList{};
}

void LinuxApplicationsTest::execLine()
{
    QFETCH(const QByteArray, exec);
    QFETCH(const QStringList, expected);
    QStringList words;
    for (const std::string &word : execArguments(exec.toStdString()))
        words += QString::fromStdString(word);
    QCOMPARE(words, expected);
}

void LinuxApplicationsTest::whatAProgramBelongsTo_data()
{
    QTest::addColumn<QByteArray>("program");
    QTest::addColumn<QByteArray>("expected");
    QTest::newRow("started through two links")
        << QByteArray("opt/google/chrome/google-chrome") << QByteArray("Google Chrome");
    QTest::newRow("beside what is started")
        << QByteArray("opt/google/chrome/chrome") << QByteArray("Google Chrome");
    QTest::newRow("deeper in its folder")
        << QByteArray("opt/google/chrome/sub/crashpad") << QByteArray("Google Chrome");
    QTest::newRow("its maker's other program") << QByteArray("opt/google/earth/earth") << QByteArray();
    QTest::newRow("behind a starter script")
        << QByteArray("usr/lib/chromium/chromium") << QByteArray("Chromium Web Browser");
    QTest::newRow("similar folder name") << QByteArray("usr/lib/chromium-driver/driver") << QByteArray();
    QTest::newRow("in a shared folder") << QByteArray("usr/bin/editor") << QByteArray("Text Editor");
    QTest::newRow("its neighbour there") << QByteArray("usr/bin/make") << QByteArray();
    QTest::newRow("bin folder of its own") << QByteArray("home/idea/jbr/bin/java") << QByteArray("Idea");
    QTest::newRow("download folder") << QByteArray("home/Downloads/tool") << QByteArray("Tool");
    QTest::newRow("another download") << QByteArray("home/Downloads/installer") << QByteArray();
    QTest::newRow("snap") << QByteArray("snap/mail/211/usr/lib/mail") << QByteArray("Mail");
    QTest::newRow("another snap") << QByteArray("snap/core22/1/bin/sh") << QByteArray();
    QTest::newRow("interpreter of an application") << QByteArray("usr/bin/python3.11") << QByteArray();
    QTest::newRow("flatpak itself") << QByteArray("usr/bin/flatpak") << QByteArray();
    QTest::newRow("renamed for the browser table")
        << QByteArray("opt/brave.com/brave/brave") << QByteArray("Brave Browser");
}

void LinuxApplicationsTest::whatAProgramBelongsTo()
{
    QFETCH(const QByteArray, program);
    QFETCH(const QByteArray, expected);
    const ApplicationMachine machine;
    for (const char *file :
         {"opt/google/chrome/google-chrome", "usr/bin/chromium", "usr/bin/editor", "usr/bin/make",
          "home/idea/bin/idea.sh", "home/Downloads/tool", "usr/bin/snap", "usr/bin/python3.11",
          "usr/bin/flatpak", "usr/bin/env", "opt/brave.com/brave/brave-browser"})
        machine.files.writeProgram(file);
    machine.files.write("usr/lib/chromium/chromium", "");
    machine.files.write("usr/lib/python3.11/os.py", "");
    machine.files.link("usr/bin/google-chrome-stable", machine.files.path("opt/google/chrome/google-chrome"));
    machine.files.link("usr/bin/python3", "python3.11");
    machine.files.link("snap/bin/mail", machine.files.path("usr/bin/snap"));
    const std::string root = machine.files.path();
    machine.addEntry("google-chrome", entry("Google Chrome", "google-chrome-stable %U"));
    machine.addEntry("chromium", entry("Chromium Web Browser", "env A=b " + root + "/usr/bin/chromium %U"));
    machine.addEntry("editor", entry("Text Editor", "editor"));
    machine.addEntry("idea", entry("Idea", '"' + root + "/home/idea/bin/idea.sh\" %f"));
    machine.addEntry("tool", entry("Tool", root + "/home/Downloads/tool"));
    machine.addEntry("mail_mail", entry("Mail", "env BAMF=x " + root + "/snap/bin/mail %u"));
    machine.addEntry("script", entry("Script", "python3 " + root + "/home/script.py"));
    machine.addEntry("org.sandbox", entry("Sandbox", "flatpak run org.sandbox", "X-Flatpak=org.sandbox"));
    machine.addEntry("brave", entry("Brave Web Browser", root + "/opt/brave.com/brave/brave-browser"));
    QCOMPARE(QByteArray::fromStdString(machine.nameFor(program.toStdString())), expected);
}

void LinuxApplicationsTest::entriesThatMakeNoApplication_data()
{
    QTest::addColumn<QByteArray>("text");
    QTest::newRow("hidden") << QByteArray::fromStdString(entry("X", "prog", "Hidden=true"));
    QTest::newRow("not for display") << QByteArray::fromStdString(entry("X", "prog", "NoDisplay=true"));
    QTest::newRow("in a terminal") << QByteArray::fromStdString(entry("X", "prog", "Terminal=true"));
    QTest::newRow("a link") << QByteArray("[Desktop Entry]\nType=Link\nName=X\nExec=prog\n");
    QTest::newRow("no name") << QByteArray("[Desktop Entry]\nType=Application\nExec=prog\n");
    QTest::newRow("not installed") << QByteArray::fromStdString(entry("X", "progg"));
    QTest::newRow("only in an action")
        << QByteArray::fromStdString(entry("X", "", "[Desktop Action a]\nExec=prog"));
    QTest::newRow("no entry at all") << QByteArray("Exec=prog\nName=X\nType=Application");
}

void LinuxApplicationsTest::entriesThatMakeNoApplication()
{
    QFETCH(const QByteArray, text);
    const ApplicationMachine machine;
    machine.files.writeProgram("usr/bin/prog");
    machine.addEntry("x", text.toStdString());
    QCOMPARE(machine.nameFor("usr/bin/prog"), "");
}

void LinuxApplicationsTest::usersEntryWins()
{
    const ApplicationMachine machine;
    machine.files.writeProgram("usr/bin/prog");
    machine.addEntry("prog", entry("System name", "prog"));
    machine.files.write("home/.local/share/applications/prog.desktop", entry("My name", "prog"));
    QCOMPARE(machine.nameFor("usr/bin/prog"), "My name");
    machine.files.write("home/.local/share/applications/prog.desktop",
                        entry("My name", "prog", "Hidden=true"));
    QCOMPARE(machine.nameFor("usr/bin/prog"), "");
}

void LinuxApplicationsTest::pagesOnTheMenuDoNotRenameTheBrowser()
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

void LinuxApplicationsTest::changedFolderIsReadAgain()
{
    const ApplicationMachine machine;
    machine.files.writeProgram("usr/bin/prog");
    machine.addEntry("other", entry("Other", "other"));
    DesktopApplications applications = machine.applications();
    QVERIFY(!applications.refresh());
    machine.files.write("home/.local/share/applications/prog.desktop", entry("Prog", "prog"));
    QVERIFY(applications.refresh());
    QCOMPARE(applications.nameFor(machine.files.path("usr/bin/prog")), "Prog");
}

void LinuxApplicationsTest::controlGroups_data()
{
    QTest::addColumn<QByteArray>("group");
    QTest::addColumn<QByteArray>("expected");
    const QByteArray slice = "0::/user.slice/user@1000.service/app.slice/";
    QTest::newRow("with its starter")
        << slice + "app-gnome-org.sandbox.Mail-1234.scope" << QByteArray("Mail");
    QTest::newRow("without") << slice + "app-org.sandbox.Mail-1234.scope" << QByteArray("Mail");
    QTest::newRow("hyphen in the name")
        << slice + "app-flatpak-my\\x2dtool-99.scope" << QByteArray("My Tool");
    QTest::newRow("as a service") << slice + "app-org.sandbox.Mail@0123abcd.service" << QByteArray("Mail");
    QTest::newRow("unknown") << slice + "app-gnome-org.unknown-1.scope" << QByteArray();
    QTest::newRow("no application's") << QByteArray("0::/system.slice/cron.service") << QByteArray();
    QTest::newRow("cut off") << slice + "app-\\x2.scope" << QByteArray();
    QTest::newRow("empty") << QByteArray() << QByteArray();
}

void LinuxApplicationsTest::controlGroups()
{
    QFETCH(const QByteArray, group);
    QFETCH(const QByteArray, expected);
    const ApplicationMachine machine;
    machine.addEntry("org.sandbox.Mail", entry("Mail", "mail"));
    machine.addEntry("my-tool", entry("My Tool", "tool"));
    const DesktopApplications applications = machine.applications();
    const std::string_view name = applications.nameForControlGroup(group.toStdString());
    QCOMPARE(QByteArray(name.data(), static_cast<qsizetype>(name.size())), expected);
}

void LinuxApplicationsTest::processes_data()
{
    QTest::addColumn<QByteArray>("executable");
    QTest::addColumn<QByteArray>("arguments");
    QTest::addColumn<bool>("kernelThread");
    QTest::addColumn<QByteArray>("path");
    QTest::addColumn<QByteArray>("name");
    QTest::newRow("plain") << QByteArray("/usr/sbin/cupsd") << QByteArray("cupsd\0-l") << false
                           << QByteArray("/usr/sbin/cupsd") << QByteArray("cupsd");
    QTest::newRow("replaced while it runs") << QByteArray("/usr/bin/tool (deleted)") << QByteArray() << false
                                            << QByteArray("/usr/bin/tool") << QByteArray("tool");
    QTest::newRow("somebody else's") << QByteArray() << QByteArray("/usr/lib/x/daemon\0--run", 24) << false
                                     << QByteArray("/usr/lib/x/daemon") << QByteArray("daemon");
    QTest::newRow("somebody else's with a title") << QByteArray() << QByteArray("sshd: user@pts/0") << false
                                                  << QByteArray("comm") << QByteArray("comm");
    QTest::newRow("ended, not collected")
        << QByteArray() << QByteArray() << false << QByteArray("comm") << QByteArray("comm");
    QTest::newRow("of the kernel") << QByteArray() << QByteArray() << true << QByteArray("[comm]")
                                   << QByteArray("comm");
}

void LinuxApplicationsTest::processes()
{
    QFETCH(const QByteArray, executable);
    QFETCH(const QByteArray, arguments);
    QFETCH(const bool, kernelThread);
    QFETCH(const QByteArray, path);
    QFETCH(const QByteArray, name);
    const StandIn proc;
    proc.write("7/cmdline", arguments.toStdString());
    if (!executable.isEmpty())
        proc.link("7/exe", executable.toStdString());
    ProcessStat stat;
    stat.command = "comm";
    stat.isKernelThread = kernelThread;
    const auto program = ProgramFinder(proc.path(), DesktopApplications({}, {})).find(7, stat, nullptr);
    QCOMPARE(QByteArray::fromStdString(program->path), path);
    QCOMPARE(QByteArray::fromStdString(program->name), name);
    QVERIFY(!program->isApp);
}

void LinuxApplicationsTest::helpersBelongToTheirApplication()
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

void LinuxApplicationsTest::scriptsOfInterpreters()
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

QTEST_APPLESS_MAIN(LinuxApplicationsTest)
#include "LinuxApplicationsTest.moc"
