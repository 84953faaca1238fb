#include "health/HealthRules.h"
#include "support/Table.h"

#include <QtTest/QTest>

using namespace swabby;

namespace {

const QStringList levels = {u"green"_qs, u"yellow"_qs, u"red"_qs};
const QStringList heat = {u"nominal"_qs, u"fair"_qs, u"serious"_qs, u"critical"_qs};

QString actionOf(const HealthIssue &issue)
{
    if (!issue.action)
        return u"none"_qs;
    const auto *section = std::get_if<OpenSection>(&*issue.action);
    return section ? sectionName(section->section) : u"quit"_qs;
}

/// A machine at these percentages: processor, memory used, storage free.
SystemStats machineAt(double cpu, double memory, double free, ThermalState state = ThermalState::nominal)
{
    SystemStats stats;
    stats.cpuUsagePercent = cpu;
    stats.memUsedBytes = static_cast<std::uint64_t>(memory * 10);
    stats.memTotalBytes = 1'000;
    stats.diskFreeBytes = static_cast<std::int64_t>(free * 10);
    stats.diskTotalBytes = 1'000;
    stats.thermalState = state;
    return stats;
}

ProcessSample mill(double cpu, std::int32_t pid = 7)
{
    return {pid, u"Mill"_qs, u"/mill"_qs, cpu};
}

} // namespace

class HealthRulesTest : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void sentences()
    {
        // Heat, processor, memory, free storage and busiest program, starred when the session stands on it,
        // with a plus when it is the system's; then level, section, what, why, how, action.
        for (const QByteArray &line : fixture(u"health/sentences.txt"_qs).trimmed().split('\n')) {
            const QStringList fields = QString::fromUtf8(line).split(u'|');
            const auto stats = machineAt(fields[1].toDouble(), fields[2].toDouble(), fields[3].toDouble(),
                                         static_cast<ThermalState>(heat.indexOf(fields[0])));
            ProcessSample busiest = mill(QString(fields[4]).remove(u'*').remove(u'+').toDouble());
            busiest.holdsSession = fields[4].endsWith(u'*');
            busiest.owner = fields[4].endsWith(u'+') ? u"the system"_qs : QString();
            const HealthVerdict verdict = computeHealth(stats, {busiest}, {}, {});
            QStringList found = {levels[static_cast<int>(verdict.level)]};
            for (const HealthIssue &issue : verdict.issues)
                found << sectionName(issue.section) << issue.what << issue.why << issue.how
                      << actionOf(issue);
            QCOMPARE(fields.mid(0, 5) + found, fields);
            if (!verdict.issues.isEmpty())
                QCOMPARE(verdict.issues.first().level, verdict.level);
        }
    }

    void oneProgramMayExplainEverything()
    {
        const QList<ProcessSample> processes = {mill(29), mill(56, 8), mill(56, 9)};
        const auto verdict = computeHealth(machineAt(60, 75, 11, ThermalState::serious), processes, {}, {});
        QStringList actions;
        for (const HealthIssue &issue : verdict.issues) {
            actions.append(actionOf(issue));
            if (const auto *kill = std::get_if<KillProcess>(&*issue.action))
                QCOMPARE(kill->process.pid, 8); // of equals the first
        }
        // Heat, load, memory, program, storage.
        QCOMPARE(actions, QStringList({u"quit"_qs, u"quit"_qs, u"speed"_qs, u"quit"_qs, u"storage"_qs}));
        QCOMPARE(verdict.level, HealthLevel::yellow);
    }

    void limitsAreTheUsers()
    {
        const HealthThresholds own = {
            .cpuYellow = 0, .cpuRed = 5, .memYellow = 5, .memRed = 50, .processCpuRed = 50};
        QString colors;
        for (const HealthIssue &issue : computeHealth(machineAt(10, 10, 50), {mill(35)}, own, {}).issues)
            colors += levels[static_cast<int>(issue.level)] + u' ';
        QCOMPARE(colors, u"red yellow yellow "_qs);
    }

    void unknownTotalsSayNothing()
    {
        SystemStats stats = machineAt(10, 99, 0);
        stats.memTotalBytes = 0;
        stats.diskTotalBytes = 0;
        QVERIFY(computeHealth(stats, {}, {}, {}).issues.isEmpty());
    }

    void buttons()
    {
        const auto label = [](const std::optional<HealthIssueAction> &action) {
            const HealthIssue issue = {HealthLevel::red, MainSection::speed, {}, {}, {}, action};
            return actionLabel(issue).value_or(u"none"_qs) + (isDestructive(issue) ? u"!"_qs : QString());
        };
        QCOMPARE(label({}), u"none"_qs);
        QCOMPARE(label(KillProcess{mill(1)}), u"Quit Mill!"_qs);
        QCOMPARE(label(OpenSection{MainSection::storage}), u"Free up space"_qs);
        QCOMPARE(label(OpenSection{MainSection::startup}), u"Review startup items"_qs);
        QCOMPARE(label(OpenSection{MainSection::network}), u"Look into it"_qs);
    }

    void sectionsInOrder()
    {
        QString words;
        for (const MainSection section : allSections) {
            words += keyEquivalent(section) + sectionName(section) + u' ';
            QCOMPARE(sectionFrom(sectionName(section)), section);
        }
        QCOMPARE(words, u"1overview 2swabbyCheck 3speed 4battery 5network 6storage 7startup 8developer "_qs);
        QVERIFY(!sectionFrom(u"Overview"_qs) && !sectionFrom({}));
    }
};

QTEST_GUILESS_MAIN(HealthRulesTest)
#include "HealthRulesTest.moc"
