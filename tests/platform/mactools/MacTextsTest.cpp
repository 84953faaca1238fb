#include "platform/mactools/HardwareReport.h"
#include "platform/mactools/LaunchdText.h"
#include "platform/mactools/MacBootClock.h"
#include "platform/mactools/NettopText.h"
#include "platform/mactools/PsText.h"
#include "platform/mactools/TopText.h"
#include "support/Table.h"

#include <QtCore/QDir>
#include <QtTest/QTest>

using namespace swabby;

namespace {

/// What a parser makes of a text, one line a row.
using Reader = QString (*)(std::string_view text);

QString numbers(std::initializer_list<double> values)
{
    return lines(values, [](double value) { return QString::number(value, 'g', 10); }).replace(u'\n', u' ');
}

QString figure(const auto &value)
{
    return value ? numbers({double(*value)}) : u"-"_qs;
}

QString processOf(const ProcessRow &row)
{
    return numbers({double(row.pid), double(row.parentPid), row.cpuPercent, row.memPercent,
                    double(row.residentBytes)}) +
           (row.isApp ? u" app "_qs : u" "_qs) + (row.holdsSession ? u"session "_qs : QString()) + row.path +
           u'|' + row.name;
}

QString powerOf(const PowerRow &row)
{
    return numbers({double(row.pid), row.power}) + u' ' + row.command;
}

QString trafficOf(const NetworkRow &row)
{
    return numbers({double(row.pid), double(row.bytesIn), double(row.bytesOut)});
}

QString weightOf(const ProcessWeight &row)
{
    return numbers({row.cpuPercent, double(row.residentBytes)}) + u' ' + row.name;
}

QString batteryOf(const BatteryHealth &report)
{
    return figure(report.cycles) + u' ' + figure(report.healthPercent);
}

QString loadedOf(const LoadedJob &job)
{
    return (job.isLoaded ? u"loaded "_qs : u"no "_qs) + figure(job.pid);
}

QString jobOf(const std::optional<LaunchJob> &job)
{
    return job ? job->label.value_or(u"(none)"_qs) + u'|' + job->programPath : u"-"_qs;
}

using Text = std::string_view;

const std::pair<QString, Reader> readers[] = {
    {u"ps"_qs, [](Text text) { return lines(parseProcessRows(text), processOf); }},
    {u"ps_matching"_qs,
     [](Text text) {
         return lines(parseMatchingRows(text, {1, 22}), processOf);
     }},
    {u"ps_weights"_qs, [](Text text) { return lines(parseWeights(text), weightOf); }},
    {u"ps_lstart"_qs, [](Text text) { return figure(parseStartTime(text)); }},
    {u"top"_qs, [](Text text) { return lines(parseTop(text), powerOf); }},
    {u"nettop"_qs, [](Text text) { return lines(parseNettop(text), trafficOf); }},
    {u"system_profiler"_qs, [](Text text) { return batteryOf(parseHardwareReport(text)); }},
    {u"launchctl"_qs, [](Text text) { return loadedOf(parseLoadedJob(text)); }},
    {u"codesign"_qs, [](Text text) { return namesAppleAuthority(text) ? u"Apple"_qs : u"-"_qs; }},
    {u"osascript"_qs, [](Text text) { return parseLoginItemNames(text).join(u'\n'); }},
    {u"sysctl"_qs, [](Text text) { return figure(parseBootTime(text)); }},
    {u"plist"_qs,
     [](Text text) { return jobOf(parseLaunchJob(QByteArray(text.data(), qsizetype(text.size())))); }},
};

} // namespace

class MacTextsTest : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void initTestCase()
    {
        qputenv("TZ", "Asia/Tokyo"); // start times are the machine's own
        tzset();
    }

    void readings()
    {
        for (const auto &[tool, reader] : readers)
            for (const QString &name :
                 QDir(QStringLiteral(SWABBY_FIXTURES "/") + tool).entryList({u"*.txt"_qs})) {
                const QString path = tool + u'/' + name;
                const QString expected =
                    path + u'\n' + QString::fromUtf8(fixture(path.chopped(3) + u"expected"_qs)).trimmed();
                QCOMPARE(path + u'\n' + reader(fixture(path).toStdString()), expected);
            }
    }

    void aJobNestedTooDeeplyForAnyReader()
    {
        const QByteArray nested = QByteArray("<array>").repeated(1'000'000);
        QVERIFY(!parseLaunchJob("<plist version=\"1.0\"><dict><key>x</key>" + nested));
    }

    void aSortedListingIsCut()
    {
        std::string text = "  PID  PPID  %CPU %MEM    RSS COMM\n\n";
        for (int i = 1; i <= 5'000; ++i)
            text += std::to_string(i) + " 1 0.5 0.1 1024 /opt/weft\n";
        QCOMPARE(parseProcessRows(text).size(), 5'000u);
        const auto cut = parseProcessRows(text, sortedListingLines);
        QCOMPARE(cut.size(), 49u); // the header is one of the fifty lines, an empty line is none
        QCOMPARE(cut.back().pid, 49);
    }
};

QTEST_GUILESS_MAIN(MacTextsTest)
#include "MacTextsTest.moc"
