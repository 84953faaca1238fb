#include "recording/Recording.h"

#include "cleanup/DeveloperCleanup.h"
#include "cleanup/Search.h"
#include "health/HistoryStore.h"
#include "platform/machinefolder/RecordedAnswers.h"
#include "platform/mactools/MacCleanupPlaces.h"
#include "recording/Findings.h"
#include "recording/MacTexts.h"
#include "recording/MachineFacts.h"
#include "recording/StartupFiles.h"

#include <QtCore/QJsonDocument>

#include <algorithm>

namespace swabby {
namespace {

QByteArray textOf(const QJsonObject &object)
{
    return QJsonDocument(object).toJson();
}

/// The container tool's list, where it is asked in another way than on a Mac.
void addContainers(const DeveloperCleanup::DockerStatus &status, ToolTexts &texts)
{
    const std::vector<std::string> tools = macCleanupPlaces({}, {}).containerTools;
    if (status.state == DeveloperCleanup::DockerState::notInstalled ||
        std::ranges::any_of(tools, [&](const std::string &tool) { return texts.has(tool); }))
        return;
    std::string rows;
    for (const DockerRow &row : status.rows)
        rows += row.type.toStdString() + '\t' + row.reclaimable.toStdString() + '\n';
    texts.addMissing(tools.front(), {"system", "df", "--format", "{{.Type}}\t{{.Reclaimable}}"}, rows);
}

} // namespace

Recording recordMachine(Machine &machine, const QString &path, PeoplesNames names, const ScanControl &control)
{
    FolderWriter folder(path);
    if (!folder.problem().isEmpty())
        return {.problem = folder.problem()};
    const std::shared_ptr<Heard> heard = listenTo(machine);
    MachineSampler sampler(machine);
    MachineSample sample;
    for (int refresh = 0; refresh < machine.refreshesUntilReal; ++refresh)
        sample = sampler.sample();
    const Search search = Search::on(machine, control);
    const std::vector<RemovableItem> found = findEverything(search);
    const auto containers = DeveloperCleanup::dockerStatus(search);
    // Who is quit is told by it.
    for (const auto *list : {&sample.processes, &sample.batteryDrainers, &sample.networkUsers})
        for (const ProcessSample &process : *list)
            machine.boot->startEpoch(process.pid);
    if (control.stop.stopRequested())
        return {.problem = QStringLiteral("it was stopped")};

    Rewriting rewriting(machine, names);
    ToolTexts texts(rewriting);
    for (const ToolRun &run : heard->runs)
        texts.add(run);
    addMissingTexts(*heard, sample.browserRollups, rewriting, texts);
    addContainers(containers, texts);
    addStartupFiles(*heard, machine, rewriting, folder, texts);
    Findings findings(machine, rewriting, folder, texts);
    for (const RemovableItem &item : found)
        findings.add(item);

    folder.addFolder(placeIn("root"));
    if (machine.permissions->refused().contains(Permission::fullDiskAccess))
        folder.addFolder(placeIn("home/.Trash")); // where the refusal is met again
    folder.addFile(placeIn("machine.json"), textOf(machineFacts(*heard, machine, found, rewriting)));
    folder.addFile(placeIn("answers.json"), RecordedAnswers::file(texts.runs()));
    folder.addFile(placeIn("home/Library/Preferences/com.swabby.app.json"),
                   textOf(settingsOf(machine, rewriting)));
    folder.finish();
    QString problem = folder.problem();
    const double now = machine.clock->now();
    if (problem.isEmpty())
        problem = HistoryStore::save(path + QStringLiteral("/home/Library/Application Support/Swabby"),
                                     HistoryStore::load(machine.places.applicationData, now), now);
    return {.answers = static_cast<int>(texts.runs().size()), .problem = problem, .sample = sample};
}

} // namespace swabby
