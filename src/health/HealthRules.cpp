#include "health/HealthRules.h"

#include "engine/ProgramFigures.h"
#include "engine/WholeNumber.h"

#include <algorithm>

namespace swabby {
namespace {

using Hog = std::optional<ProcessSample>;

Hog findHog(const QList<ProcessSample> &processes)
{
    constexpr double leastLoad = 30;
    const auto busiest =
        std::max_element(processes.begin(), processes.end(),
                         [](const auto &a, const auto &b) { return a.cpuPercent < b.cpuPercent; });
    if (busiest == processes.end() || busiest->cpuPercent < leastLoad)
        return std::nullopt;
    return *busiest;
}

using Action = std::optional<HealthIssueAction>;

/// Nobody is offered the end of their own session, nor what is not theirs.
Action quitAction(const ProcessSample &hog)
{
    return hog.mayBeQuit() ? Action(KillProcess{hog}) : std::nullopt;
}

Action quitOrLook(const Hog &hog)
{
    return hog ? quitAction(*hog) : OpenSection{MainSection::speed};
}

/// To quit the program, as the sentence says, or what helps when that is not for this person to do.
QString advice(const ProcessSample &hog, const QString &quit, const QString &who)
{
    if (hog.mayBeQuit())
        return quit;
    return who + QLatin1Char(' ') + whyNotQuit(hog) +
           (hog.holdsSession ? QStringLiteral(", so quitting it would close everything. Close windows you "
                                              "don't need; if that isn't enough, save your work, then log "
                                              "out and in again.")
                             : QStringLiteral(", so it isn't yours to quit. It may well be done in a few "
                                              "minutes; if it goes on for long, a restart helps once "
                                              "everybody has saved their work."));
}

void judgeHeat(ThermalState state, const Hog &hog, const MachineWords &words, QList<HealthIssue> &issues)
{
    if (state == ThermalState::serious) {
        issues.append(
            {.level = HealthLevel::yellow,
             .section = MainSection::speed,
             .what = QStringLiteral("Your %1 is running hot").arg(words.computer),
             .why =
                 hog ? hog->name + QStringLiteral(" has been ") + powerText(hog->cpuPercent, words) +
                           QStringLiteral(", which is enough to warm it up noticeably.")
                     : QStringLiteral("It's working harder than usual, which raises the temperature and can "
                                      "make the fans kick in."),
             .how = hog ? advice(*hog,
                                 QStringLiteral("Quitting ") + hog->name +
                                     QStringLiteral(" should bring the temperature back down."),
                                 hog->name)
                        : QStringLiteral("Check what's running and close anything you don't need right now."),
             .action = quitOrLook(hog)});
    } else if (state == ThermalState::critical) {
        issues.append(
            {.level = HealthLevel::red,
             .section = MainSection::speed,
             .what = QStringLiteral("Your %1 is overheating").arg(words.computer),
             .why = hog ? hog->name + QStringLiteral(" has been ") + powerText(hog->cpuPercent, words) +
                              QStringLiteral(", and running that hard is generating enough heat "
                                             "that %1 is slowing itself down to cool off.")
                                  .arg(words.slowedBy)
                        : QStringLiteral("When a %1 runs too hot, %2 automatically slows everything down to "
                                         "protect itself — that's why it feels sluggish right now.")
                              .arg(words.computer, words.slowedBy),
             .how = hog ? advice(*hog,
                                 QStringLiteral("Quitting ") + hog->name +
                                     QStringLiteral(" should let it cool down and get back to full speed."),
                                 hog->name)
                        : QStringLiteral(
                              "Let it rest somewhere cool and open, make sure the vents aren't blocked, "
                              "and close anything demanding you don't need running."),
             .action = quitOrLook(hog)});
    }
}

void judgeLoad(double cpu, const Hog &hog, const HealthThresholds &limits, const MachineWords &words,
               QList<HealthIssue> &issues)
{
    if (cpu >= limits.cpuRed) {
        issues.append(
            {.level = HealthLevel::red,
             .section = MainSection::speed,
             .what = QStringLiteral("Your %1 is working very hard right now (").arg(words.computer) +
                     percentText(cpu) + QStringLiteral(" busy)"),
             .why =
                 QStringLiteral("When the processor is this busy, everything else — opening apps, switching "
                                "windows, typing — feels slower than normal."),
             .how = hog ? advice(*hog,
                                 hog->name + QStringLiteral(" is the biggest reason why. Quitting it should "
                                                            "free things up right away."),
                                 hog->name + QStringLiteral(" is the biggest reason why, but it"))
                        : QStringLiteral(
                              "Check what's running and quit anything you don't need open right now."),
             .action = quitOrLook(hog)});
    } else if (cpu >= limits.cpuYellow) {
        issues.append(
            {.level = HealthLevel::yellow,
             .section = MainSection::speed,
             .what = QStringLiteral("Your %1 is working harder than usual (").arg(words.computer) +
                     percentText(cpu) + QStringLiteral(" busy)"),
             .why = QStringLiteral(
                 "Nothing's wrong yet, but you may notice things feeling a little less snappy than "
                 "usual."),
             .how =
                 hog ? hog->name + QStringLiteral(" is using the most power right now — worth a look if this "
                                                  "keeps up.")
                     : QStringLiteral("Worth keeping an eye on what's running if this keeps up."),
             .action = quitOrLook(hog)});
    }
}

void judgeMemory(double memory, const HealthThresholds &limits, const MachineWords &words,
                 QList<HealthIssue> &issues)
{
    if (memory >= limits.memRed) {
        issues.append(
            {.level = HealthLevel::red,
             .section = MainSection::speed,
             .what = QStringLiteral("It's almost out of memory (") + percentText(memory) +
                     QStringLiteral(" used)"),
             .why = QStringLiteral("When memory fills up, your %1 has to shuffle data to and from disk to "
                                   "keep up, which makes apps feel sluggish or unresponsive.")
                        .arg(words.computer),
             .how = QStringLiteral("Quitting a memory-hungry app you're not using frees it up immediately."),
             .action = OpenSection{MainSection::speed}});
    } else if (memory >= limits.memYellow) {
        issues.append(
            {.level = HealthLevel::yellow,
             .section = MainSection::speed,
             .what =
                 QStringLiteral("Memory is filling up (") + percentText(memory) + QStringLiteral(" used)"),
             .why = QStringLiteral(
                 "You're not out yet, but if this keeps climbing things will start to feel slower."),
             .how = QStringLiteral(
                 "Worth checking which apps are using the most memory if you notice slowdown."),
             .action = OpenSection{MainSection::speed}});
    }
}

void judgeProcess(const Hog &hog, const HealthThresholds &limits, const MachineWords &words,
                  QList<HealthIssue> &issues)
{
    constexpr double yellowShare = 0.7;
    if (!hog || hog->cpuPercent < yellowShare * limits.processCpuRed)
        return;
    const QString what = hog->name + QStringLiteral(" is ") + powerText(hog->cpuPercent, words);
    if (hog->cpuPercent >= limits.processCpuRed) {
        issues.append({.level = HealthLevel::red,
                       .section = MainSection::speed,
                       .what = what,
                       .why = QStringLiteral(
                           "That's high enough on its own to slow down everything else you're doing."),
                       .how = advice(*hog,
                                     QStringLiteral("Quitting ") + hog->name +
                                         QStringLiteral(" should give you that power back immediately."),
                                     hog->name),
                       .action = quitAction(*hog)});
    } else {
        issues.append(
            {.level = HealthLevel::yellow,
             .section = MainSection::speed,
             .what = what,
             .why = QStringLiteral("It's the busiest thing running right now — not a problem yet, but worth "
                                   "knowing about."),
             .how = advice(*hog,
                           QStringLiteral("If things feel slow, quitting ") + hog->name +
                               QStringLiteral(" is the quickest way to find out if it's the cause."),
                           hog->name),
             .action = quitAction(*hog)});
    }
}

void judgeStorage(const SystemStats &stats, const MachineWords &words, QList<HealthIssue> &issues)
{
    constexpr double redBelow = 0.05;
    constexpr double yellowBelow = 0.12;
    if (stats.diskTotalBytes <= 0)
        return;
    const double freeShare =
        static_cast<double>(stats.diskFreeBytes) / static_cast<double>(stats.diskTotalBytes);
    if (freeShare < redBelow) {
        issues.append(
            {.level = HealthLevel::red,
             .section = MainSection::storage,
             .what = QStringLiteral("You're almost out of storage space") + volumeText(stats),
             .why = QStringLiteral("With storage this full, apps can slow down, updates can fail, and some "
                                   "apps may refuse to save files at all."),
             .how = QStringLiteral("Clearing caches, duplicates, or old large files in Storage can free up "
                                   "space in a couple of %1s.")
                        .arg(words.press),
             .action = OpenSection{MainSection::storage}});
    } else if (freeShare < yellowBelow) {
        issues.append({.level = HealthLevel::yellow,
                       .section = MainSection::storage,
                       .what = QStringLiteral("Storage space is getting low") + volumeText(stats),
                       .why = QStringLiteral(
                           "You're not out yet, but it's worth clearing some space before it becomes a "
                           "problem."),
                       .how = QStringLiteral(
                           "A quick scan in Storage usually finds caches and duplicates you can safely "
                           "remove."),
                       .action = OpenSection{MainSection::storage}});
    }
    // Where the system's volume is named, the person's own files lie on another one.
    if (freeShare < yellowBelow && stats.diskMountPoint == QLatin1String("/")) {
        issues.last().how =
            QStringLiteral("Your own files lie on another volume, so clearing them makes no room "
                           "there. Removing programs you don't need does.");
        issues.last().action.reset();
    }
}

} // namespace

HealthVerdict computeHealth(const SystemStats &stats, const QList<ProcessSample> &processes,
                            const HealthThresholds &thresholds, const MachineWords &words)
{
    const Hog hog = findHog(processes);
    HealthVerdict verdict;
    judgeHeat(stats.thermalState, hog, words, verdict.issues);
    judgeLoad(stats.cpuUsagePercent, hog, thresholds, words, verdict.issues);
    judgeMemory(memoryPercent(stats), thresholds, words, verdict.issues);
    judgeProcess(hog, thresholds, words, verdict.issues);
    judgeStorage(stats, words, verdict.issues);
    for (const HealthIssue &issue : verdict.issues)
        verdict.level = std::max(verdict.level, issue.level);
    return verdict;
}

std::optional<QString> actionLabel(const HealthIssue &issue)
{
    if (!issue.action)
        return std::nullopt;
    if (const auto *kill = std::get_if<KillProcess>(&*issue.action))
        return QStringLiteral("Quit ") + kill->process.name;
    switch (std::get<OpenSection>(*issue.action).section) {
    case MainSection::storage:
        return QStringLiteral("Free up space");
    case MainSection::startup:
        return QStringLiteral("Review startup items");
    default:
        return QStringLiteral("Look into it");
    }
}

bool isDestructive(const HealthIssue &issue)
{
    return issue.action && std::holds_alternative<KillProcess>(*issue.action);
}

QString healthWord(HealthLevel level)
{
    switch (level) {
    case HealthLevel::green:
        return QStringLiteral("Healthy");
    case HealthLevel::yellow:
        return QStringLiteral("Under load");
    case HealthLevel::red:
        return QStringLiteral("Struggling");
    }
    return {};
}

} // namespace swabby
