#include "StandIn.h"
#include "platform/linux/ProgramFinder.h"
#include "support/Table.h"

#include <QtTest/QTest>

using namespace swabby;

namespace {

DesktopApplications applicationsOf(const StandIn &files)
{
    DesktopApplications result(
        {files.path("home/.local/share/applications"), files.path("usr/share/applications")},
        {files.path(), files.path("home"), {files.path("usr/bin"), files.path("snap/bin")}});
    result.refresh();
    return result;
}

} // namespace

class LinuxApplicationsTest : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void execLine()
    {
        compareTable(fixture(u"linux/exec_line.txt"_qs), [](const Cells &row) {
            QString words;
            for (const std::string &word : execArguments(row.string(1)))
                words += u'<' + QString::fromStdString(word) + u'>';
            return words;
        });
    }

    void whatAProgramBelongsTo()
    {
        const StandIn files;
        files.plant(fixture(u"linux/applications.txt"_qs));
        const DesktopApplications applications = applicationsOf(files);
        compareTable(fixture(u"linux/what_a_program_belongs_to.txt"_qs), [&](const Cells &row) {
            return QString::fromStdString(std::string(applications.nameFor(files.path(row.string(1)))));
        });
    }

    void entriesThatNamePrograms()
    {
        compareScenes(u"linux/entries_that_name_programs.txt"_qs, [](const StandIn &files) {
            const DesktopApplications applications = applicationsOf(files);
            QString names;
            for (const char *program : {"usr/bin/prog", "opt/browser/start", "opt/browser/engine"})
                if (const std::string name(applications.nameFor(files.path(program))); !name.empty())
                    names += QLatin1String(program) + u'=' + QString::fromStdString(name) + u'\n';
            return names.trimmed();
        });
    }

    void changedFolderIsReadAgain()
    {
        const StandIn files;
        files.plant("usr/bin/prog | *\nusr/share/applications/other.desktop | Other | other");
        DesktopApplications applications = applicationsOf(files);
        QVERIFY(!applications.refresh());
        files.plant("home/.local/share/applications/prog.desktop | Prog | prog");
        QVERIFY(applications.refresh());
        QCOMPARE(applications.nameFor(files.path("usr/bin/prog")), "Prog");
    }

    void controlGroups()
    {
        const StandIn files;
        files.plant("usr/share/applications/org.sandbox.Mail.desktop | Mail | mail\n"
                    "usr/share/applications/my-tool.desktop | My Tool | tool");
        const DesktopApplications applications = applicationsOf(files);
        compareTable(fixture(u"linux/control_groups.txt"_qs), [&](const Cells &row) {
            const QByteArray slice = "0::/user.slice/user@1000.service/app.slice";
            const std::string group = row[1].replace("SLICE", slice).toStdString();
            return QString::fromStdString(std::string(applications.nameForControlGroup(group)));
        });
    }

    void processes()
    {
        // Its exe link and its arguments; its path and its name.
        compareTable(fixture(u"linux/processes.txt"_qs), [](const Cells &row) {
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
        const Program browser = {"/usr/bin/browser", "Web", {}, {}, true};
        const Program shell = {"/usr/bin/bash", "bash", {}, {}, false};
        compareTable(fixture(u"linux/helpers_belong_to_their_application.txt"_qs), [&](const Cells &row) {
            proc.link("8/exe", row.string(0));
            return QString::fromStdString(finder.find(8, {}, row[1] == "shell" ? &shell : &browser)->name);
        });
    }

    void scriptsOfInterpreters()
    {
        const StandIn proc;
        proc.plant("usr/bin/tweaks | *\nusr/share/applications/tweaks.desktop | Tweaks | tweaks");
        const ProgramFinder finder(proc.path(), applicationsOf(proc));
        const auto find = [&](const std::string &arguments) {
            proc.link("8/exe", "/usr/bin/python3.11");
            proc.write("8/cmdline", arguments);
            return finder.find(8, {}, nullptr);
        };
        const std::string script = proc.path("usr/bin/tweaks");
        const auto application = find(std::string("python3\0-I\0", 11) + script);
        QCOMPARE(application->name, "Tweaks");
        QCOMPARE(application->script, script);
        QVERIFY(application->isApp);
        QCOMPARE(find(std::string("python3\0", 8) + proc.path("usr/bin/else"))->name, "python3.11");
        QVERIFY(!find("python3")->isApp);
        QVERIFY(!find("")->isApp);
    }
};

QTEST_APPLESS_MAIN(LinuxApplicationsTest)
#include "LinuxApplicationsTest.moc"
