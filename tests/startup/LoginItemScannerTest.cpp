#include "startup/LoginItemScanner.h"
#include "support/Table.h"
#include "support/TemporaryMachine.h"

#include <QtCore/QFile>
#include <QtTest/QTest>

using namespace swabby;

namespace {

constexpr double boot = 1'773'388'800; // Fri Mar 13 08:00:00 2026 UTC

class StartupFolder : public TemporaryMachine {
public:
    StartupFolder() : TemporaryMachine({{u"now"_qs, boot + 9'000}, {u"userID"_qs, 502}})
    {
        qputenv("TZ", "UTC");
        tzset();
        writeFile(u"opt/weft"_qs, "program");
        addTool(u"/usr/bin/codesign"_qs,
                "case $3 in *loom*) echo Authority=Apple Root CA >&2;; *) echo none;; esac");
        addTool(u"/bin/launchctl"_qs, "echo \"Could not find service\"");
    }

    QString program(const QString &name = u"weft"_qs) const { return folder() + u"/opt/"_qs + name; }

    void addJob(const QString &path, const QString &label, const QString &program,
                const QByteArray &more = {}) const
    {
        QByteArray body;
        if (!label.isNull())
            body += "<key>Label</key><string>" + label.toUtf8() + "</string>";
        if (!program.isNull())
            body += "<key>Program</key><string>" + program.toUtf8() + "</string>";
        writeFile(path, "<?xml version=\"1.0\" encoding=\"UTF-8\"?><plist version=\"1.0\"><dict>" + body +
                            more + "</dict></plist>");
    }

    /// The jobs of a file of tests/fixtures: place, label, program below opt, and more of the list; "-" for a
    /// key that is not there.
    void addJobs(const QString &name) const
    {
        const auto given = [](const QString &text) { return text == u"-" ? QString() : text; };
        for (const QByteArray &line : fixture(name).trimmed().split('\n')) {
            const Cells row(line);
            const QString file =
                row[2].isEmpty() || row[2] == "-" ? given(row.text(2)) : program(row.text(2));
            addJob(row.text(0), given(row.text(1)), file, row[3].replace("OPT", folder().toUtf8() + "/opt"));
        }
    }

    QList<LoginItem> scan() const
    {
        const auto machine = open();
        return LoginItemScanner::scan(*machine->startup, *machine->boot);
    }
};

QString labelsOf(const QList<LoginItem> &items)
{
    return lines(items, [](const LoginItem &item) { return item.label; });
}

const QString agents = u"home/Library/LaunchAgents/"_qs;
const QString daemons = u"root/Library/LaunchDaemons/"_qs;

} // namespace

class LoginItemScannerTest : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void everyFieldOfARunningAgent()
    {
        const StartupFolder folder;
        folder.addJob(agents + u"weft.plist"_qs, u"org.example.weft"_qs, folder.program());
        folder.addTool(u"/bin/launchctl"_qs, R"(printf 'x = {\n\tstate = running\n\tpid = 812\n}\n')");
        folder.addTool(u"/usr/sbin/sysctl"_qs,
                       "echo '{ sec = 1773388800, usec = 999999 } Fri Mar 13 08:00:00 2026'");
        folder.addTool(u"/bin/ps"_qs, R"(printf 'Fri Mar 13 08:00:41 2026    \n')");
        const QList<LoginItem> expected = {
            {.label = u"org.example.weft"_qs,
             .plistPath = folder.home() + u"/Library/LaunchAgents/weft.plist"_qs,
             .programPath = folder.program(),
             .scope = LoginItemScope::userAgent,
             .isLoaded = true,
             .canDisableInPlace = true,
             .bootDelaySeconds = 41}};
        QCOMPARE(folder.scan(), expected);
        QCOMPARE(expected.first().id(), u"Runs in the background:org.example.weft"_qs);

        folder.addTool(u"/usr/bin/osascript"_qs, "echo Loom");
        QCOMPARE(labelsOf(folder.scan()), u"org.example.weft\nLoom"_qs);
        for (
            const QString &run :
            {u"/usr/bin/codesign -dv --verbose=2 "_qs + folder.program(),
             u"/bin/launchctl print gui/502/org.example.weft"_qs,
             u"/usr/bin/osascript -e tell application \"System Events\" to get the name of every login item"_qs})
            QVERIFY2(folder.runs().contains(run), qPrintable(folder.runs()));
    }

    void scopes()
    {
        const StartupFolder folder;
        folder.addJobs(u"startup/scopes.txt"_qs);
        folder.addTool(u"/usr/bin/osascript"_qs, "echo 'same, other,'; echo refused >&2");
        folder.addTool(u"/bin/launchctl"_qs,
                       "[ $2 = system/same ] && echo known || echo 'Could not find service'");
        const QString words = lines(folder.scan(), [](const LoginItem &item) {
            return item.id() + (item.isLoaded ? u" loaded"_qs : QString()) +
                   (item.canDisableInPlace ? u" own"_qs : QString()) +
                   (item.isAppleSigned ? u" signed"_qs : QString());
        });
        QCOMPARE(words,
                 u"Runs in the background:same own\nSystem-wide background helper:same\n"
                 "Starts before you even log in:same loaded\nOpens when you log in:other loaded signed\n"
                 "Opens when you log in:same loaded signed"_qs);
    }

    void whatIsNotListed()
    {
        const StartupFolder folder;
        folder.addJobs(u"startup/not_listed.txt"_qs);
        folder.writeFile(agents + u"broken.plist"_qs, "<plist><dict><key>Label");
        folder.writeFile(agents + u"list.plist"_qs, "<plist version=\"1.0\"><array/></plist>");
        QVERIFY(QFile::link(u"/nonexistent/x.plist"_qs, folder.folder() + u'/' + agents + u"gone.plist"_qs));
        folder.writeFile(u"root/Library/LaunchDaemons"_qs, "a file in place of the folder");
        QCOMPARE(labelsOf(folder.scan()), u"com.applejuice"_qs);
        QCOMPARE(folder.events(u"run"_qs).size(), 2); // none for what is not listed, and osascript is missing
    }

    void programsAndOrder()
    {
        const StartupFolder folder;
        folder.addJobs(u"startup/programs.txt"_qs);
        folder.writeFile(u"opt/loom"_qs, "program");
        const QList<LoginItem> items = folder.scan();
        QCOMPARE(labelsOf(items),
                 u"Z unsigned\nb gone though signed\nno label.plist\n\uFFEE below\n\U0001F9F5 beyond\n"
                 "B nothing known\na signed"_qs);
        QCOMPARE(items[0].programPath, folder.program());
        QVERIFY(items[1].isOrphaned && items[1].isAppleSigned);
        const LoginItem &nothing = items[5];
        QVERIFY(nothing.programPath.isEmpty() && !nothing.isOrphaned && nothing.isAppleSigned &&
                !nothing.isLoaded);
        QVERIFY(!items[6].isOrphaned && items[6].isAppleSigned);
    }

    void missingToolsGiveNeutralFacts()
    {
        const StartupFolder folder;
        for (const QString &tool : {u"/usr/bin/codesign"_qs, u"/bin/launchctl"_qs})
            QVERIFY(QFile::remove(folder.folder() + u"/root"_qs + tool));
        folder.addJob(daemons + u"a.plist"_qs, u"a"_qs, folder.program());
        const QList<LoginItem> items = folder.scan();
        QCOMPARE(items.size(), 1);
        QVERIFY(!items[0].isLoaded && !items[0].isAppleSigned && !items[0].bootDelaySeconds);
    }
};

QTEST_GUILESS_MAIN(LoginItemScannerTest)
#include "LoginItemScannerTest.moc"
