#include "StandIn.h"
#include "platform/linux/LinuxStartupSource.h"
#include "support/Table.h"

#include <QtTest/QTest>

using namespace swabby;

namespace {

using PidRunning = std::function<std::int32_t(const std::string &program, const std::string &folder)>;

/// What starts on a machine for this user.
LinuxStartupSource sourceOf(
    const StandIn &files, const PidRunning &pidRunning = [](auto &&...) { return 0; })
{
    LinuxStartupSource::Sources sources;
    sources.autostart = {files.path("home/.config/autostart"),
                         {files.path("etc/xdg-mine/autostart"), files.path("etc/xdg/autostart")},
                         "GNOME:GNOME-Classic"};
    sources.units = {files.path("home/.config/systemd/user"), files.path("etc/systemd/user"),
                     files.path("etc/systemd/system")};
    sources.programs = {
        files.path(), files.path("home"), {files.path("usr/local/bin"), files.path("usr/bin")}};
    sources.ownProgram = files.path("usr/bin/swabby");
    sources.pidRunning = pidRunning;
    return LinuxStartupSource(std::move(sources));
}

/// Scope, label, program, flags (missing, vendor, overridable, Swabby's own) and where it is defined.
QString wordsOf(const StartupEntry &entry)
{
    return QString::number(static_cast<int>(entry.scope)) + u'|' + entry.label + u'|' + entry.programPath +
           u'|' + (entry.programIsMissing ? u"m"_qs : QString()) +
           (entry.isVendorSigned ? u"v"_qs : QString()) + (entry.canBeOverridden ? u"o"_qs : QString()) +
           (entry.isOwn ? u"s"_qs : QString()) + u'|' + entry.definitionPath;
}

} // namespace

class LinuxStartupTest : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void whatAnAutostartEntryStarts()
    {
        compareTable(fixture(u"linux/what_an_autostart_entry_starts.txt"_qs), [](const Cells &row) {
            const StandIn files;
            files.writeProgram("usr/bin/prog");
            files.write("home/.config/autostart/a.desktop",
                        "[Desktop Entry]\nType=Application\nName=A\nExec=prog\n" + row.string(1));
            return lines(sourceOf(files).entries(), [&](const StartupEntry &entry) {
                return wordsOf(entry).section(u'|', 0, 2).remove(QString::fromStdString(files.path() + '/'));
            });
        });
    }

    void entries()
    {
        compareScenes(u"linux/startup_entries.txt"_qs,
                      [](const StandIn &files) { return lines(sourceOf(files).entries(), wordsOf); });
    }

    void runningAutostartProgram()
    {
        const StandIn files;
        files.plant("opt/cloud/bin/cloud | *\nusr/bin/flatpak | *\n"
                    "usr/bin/cloud | -> ROOT/opt/cloud/bin/cloud\n"
                    "home/.config/autostart/a.desktop | Cloud | cloud\n"
                    "home/.config/autostart/b.desktop | Sandboxed | flatpak run org.example\n");
        std::string asked;
        auto source = sourceOf(files, [&](const std::string &program, const std::string &folder) {
            asked += program + ' ' + folder + ';';
            return program == files.path("opt/cloud/bin/cloud") ? 4711 : 0;
        });
        const auto entries = source.entries();
        QCOMPARE(entries[0].pid, 4711);
        QVERIFY(entries[0].isLoaded);
        QVERIFY(!entries[1].isLoaded && !entries[1].pid);
        // What runs other programs is not asked about.
        QCOMPARE(asked, files.path("opt/cloud/bin/cloud") + ' ' + files.path("opt/cloud") + ';');
    }

    void unitFiles()
    {
        compareTable(fixture(u"linux/unit_files.txt"_qs), [](const Cells &row) {
            return QString::fromStdString(unitFileFrom(row.string(1)).command);
        });
        compareTable(fixture(u"linux/unit_commands.txt"_qs), [](const Cells &row) {
            QString words;
            for (const std::string &word : unitCommand(row.string(1), {"vpn@home.service", "/home/me"}))
                words += u'<' + QString::fromStdString(word) + u'>';
            return words;
        });
    }

    void changedFilesAreReadAgain()
    {
        const StandIn files;
        auto source = sourceOf(files);
        files.plant("home/.config/autostart/a.desktop | A | /opt/one");
        QCOMPARE(source.entries().front().programPath, u"/opt/one"_qs);
        files.plant("opt/one | *\nhome/.config/autostart/a.desktop | A | /opt/another");
        QCOMPARE(source.entries().front().programPath, u"/opt/another"_qs);
        files.remove("home/.config/autostart/a.desktop");
        QVERIFY(source.entries().empty());
    }
};

QTEST_APPLESS_MAIN(LinuxStartupTest)
#include "LinuxStartupTest.moc"
