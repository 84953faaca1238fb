#include "engine/Samplers.h"
#include "support/Table.h"

#include <QtTest/QTest>

#include <limits>

using namespace swabby;

namespace {

constexpr std::int32_t ownPid = 500;

struct FakeSurvey final : ProcessSurvey {
    std::optional<std::vector<ProcessRow>> byLoad;
    std::optional<std::vector<ProcessRow>> bySize;
    std::vector<ProcessRow> looked;
    std::vector<ProcessWeight> weighed;
    std::vector<PowerRow> powered;
    std::vector<NetworkRow> moved;
    int questions = 0;

    std::optional<std::vector<ProcessRow>> busiest() override { return ++questions, byLoad; }
    std::optional<std::vector<ProcessRow>> largest() override { return ++questions, bySize; }
    std::vector<ProcessRow> matching(const std::unordered_set<std::int32_t> &) override
    {
        return ++questions, looked;
    }
    std::vector<ProcessRow> all() override { return looked; }
    std::vector<ProcessWeight> weights() override { return weighed; }
    std::optional<std::uint64_t> memoryTogether(std::span<const std::int32_t> pids) override
    {
        return pids.front() == 0 ? std::nullopt : std::optional<std::uint64_t>(pids.front() + pids.back());
    }
    std::vector<PowerRow> power() override { return powered; }
    std::vector<NetworkRow> network() override { return moved; }
};

ProcessRow process(std::int32_t pid, double cpu, double mem, std::int32_t parent = 1)
{
    return {pid, parent, cpu, mem, 0, u"/opt/mill"_qs, u"mill"_qs};
}

QList<std::int32_t> pidsOf(const QList<ProcessSample> &samples)
{
    QList<std::int32_t> pids;
    for (const ProcessSample &sample : samples)
        pids.append(sample.pid);
    return pids;
}

} // namespace

class SamplersTest : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void exclusion()
    {
        // Number, parent and command.
        compareTable(fixture(u"engine/exclusion.txt"_qs), [](const Cells &row) {
            const QString path = row.text(2);
            const ProcessRow process = {.pid = row[0].toInt(),
                                        .parentPid = row[1].toInt(),
                                        .path = path,
                                        .name = path.section(u'/', -1)};
            return ProcessSampler::isExcluded(process, ownPid) ? u"excluded"_qs : u"listed"_qs;
        });
    }

    void topListIsTheUnionByTheSum()
    {
        FakeSurvey survey;
        survey.byLoad = {process(1, 50, 1), process(2, 20, 5), process(3, 90, 9, ownPid), process(4, 10, 1)};
        survey.bySize = {process(5, 1, 40), process(2, 99, 99), process(6, 1, 10), process(7, 5, 6)};
        // The listing by load wins for 2; 4, 6 and 7 tie and stay in the order found.
        QCOMPARE(pidsOf(ProcessSampler::topProcesses(survey, 8, ownPid)), QList({1, 5, 2, 4, 6, 7}));
        QCOMPARE(pidsOf(ProcessSampler::topProcesses(survey, 2, ownPid)), QList({1, 5}));
        survey.questions = 0;
        QVERIFY(ProcessSampler::topProcesses(survey, 0, ownPid).isEmpty());
        QCOMPARE(survey.questions, 2);
    }

    void oneListingIsNotEnough()
    {
        FakeSurvey survey;
        survey.byLoad = {process(1, 50, 1)};
        QVERIFY(ProcessSampler::topProcesses(survey, 8, ownPid).isEmpty());
        std::swap(survey.byLoad, survey.bySize);
        survey.questions = 0;
        QVERIFY(ProcessSampler::topProcesses(survey, 8, ownPid).isEmpty());
        QCOMPARE(survey.questions, 1); // without the first nobody asks for the second
    }

    void lookingUpPids()
    {
        FakeSurvey survey;
        survey.looked = {process(1, 1, 1), process(2, 1, 1, ownPid), process(1, 9, 9)};
        QVERIFY(ProcessSampler::processes(survey, {}, ownPid).empty());
        QCOMPARE(survey.questions, 0);
        const auto found = ProcessSampler::processes(survey, {1, 2}, ownPid);
        QCOMPARE(found.size(), 1u);
        QCOMPARE(found.at(1).cpuPercent, 1.0);
    }

    void browserNames()
    {
        compareTable(fixture(u"engine/browser_names.txt"_qs), [](const Cells &row) {
            return BrowserRollup::groupName(row.text(0)).value_or(u"none"_qs);
        });
    }

    void browsersAreSummed()
    {
        FakeSurvey survey;
        survey.weighed = {{u"Safari"_qs, 1.5, 100},
                          {u"mill"_qs, 90, 9'000},
                          {u"firefox"_qs, 2, 500},
                          {u"Safari Web Content"_qs, 2, 300},
                          {u"Brave Browser"_qs, 0, 500},
                          {u"Mill Web"_qs, 1, 9'000, 200, true},
                          {u"Mill Web"_qs, 1, 9'000, 250, true}};
        const QList<BrowserRollupEntry> expected = {{u"Firefox"_qs, 1, 500, 2},
                                                    {u"Brave Browser"_qs, 1, 500, 0},
                                                    {u"Mill Web"_qs, 2, 450, 2},
                                                    {u"Safari"_qs, 2, 400, 3.5}};
        QCOMPARE(BrowserRollup::sample(survey), expected);
    }

    void powerByPid()
    {
        FakeSurvey survey;
        survey.powered = {{1, u"mill"_qs, 1}, {ownPid, u"x"_qs, 9}, {2, u"Swabby"_qs, 9}, {1, u"mill"_qs, 4}};
        QCOMPARE(PowerSampler::sample(survey, ownPid), (std::unordered_map<std::int32_t, double>{{1, 4}}));
    }

    void trafficByPid()
    {
        constexpr auto most = std::numeric_limits<std::int64_t>::max();
        FakeSurvey survey;
        survey.moved = {{1, 10, 5}, {2, most, most}, {1, 1, 0}, {3, 0, 0}};
        const std::unordered_map<std::int32_t, std::int64_t> expected = {{1, 16}, {2, most}, {3, 0}};
        QCOMPARE(NetworkSampler::sample(survey), expected);
    }
};

QTEST_GUILESS_MAIN(SamplersTest)
#include "SamplersTest.moc"
