#include "cleanup/DeveloperCleanup.h"

#include "cleanup/ContainerEngine.h"
#include "cleanup/DiskUsage.h"
#include "engine/SaturatedBytes.h"

namespace swabby::DeveloperCleanup {
namespace {

/// Runs the container tool for that engine and no other, whatever its settings say by now; where there is
/// none to name, for the one it finds.
std::optional<std::string> runDocker(Shell &shell, const std::string &docker, const std::string &engine,
                                     std::vector<std::string> words, const StopToken &stop = {})
{
    if (engine.empty())
        return shell.run(docker, words, ToolOutput::bothStreams, stop);
    words.insert(words.begin(),
                 {"DOCKER_HOST=" + engine, "DOCKER_CONTEXT=", "DOCKER_TLS=", "DOCKER_TLS_VERIFY=", docker});
    return shell.run("/usr/bin/env", words, ToolOutput::bothStreams, stop);
}

} // namespace

std::int64_t derivedDataSize(const Search &search)
{
    if (search.machine.cleanup.buildCache.empty())
        return 0;
    std::int64_t bytes = 0;
    for (const std::int64_t part :
         directorySizes(search, partsThatMayGo(search.machine.cleanup.buildCache, search.excludes)))
        bytes = saturatedSum(bytes, part);
    return bytes;
}

bool clearDerivedData(const Machine &machine, const ExcludeList &excludes)
{
    const std::filesystem::path &folder = machine.cleanup.buildCache;
    const auto identity = folder.empty() ? std::nullopt : FileIdentity::of(folder);
    if (!identity)
        return true; // nothing is there that could stay
    return machine.disposal->emptyFolder(
        {folder, machine.cleanup.home, *identity},
        [&](const std::filesystem::path &path) { return excludes.covers(path); });
}

std::vector<SimulatorRuntimeInfo> scanSimulatorRuntimes(const Search &search)
{
    const std::string &tool = search.machine.cleanup.simulatorTool;
    if (tool.empty())
        return {};
    const auto text = search.machine.shell->run(tool, {"simctl", "runtime", "list", "-j"},
                                                ToolOutput::bothStreams, search.control.stop);
    if (!text)
        return {};
    return parseSimulatorRuntimes(QByteArray::fromStdString(*text), search.machine.clock->now());
}

void deleteSimulatorRuntimes(const Machine &machine, const std::vector<QString> &identifiers)
{
    if (machine.cleanup.simulatorTool.empty())
        return;
    for (const QString &identifier : identifiers)
        machine.shell->run(machine.cleanup.simulatorTool,
                           {"simctl", "runtime", "delete", identifier.toStdString()});
}

std::optional<std::string> findDocker(const Machine &machine)
{
    const std::vector<std::string> &known = machine.cleanup.containerTools;
    const auto found = std::find_if(known.begin(), known.end(),
                                    [&](const std::string &tool) { return machine.shell->has(tool); });
    return found == known.end() ? std::nullopt : std::optional(*found);
}

DockerStatus dockerStatus(const Search &search)
{
    const std::optional<ContainerSettings> &settings = search.machine.cleanup.containers;
    const auto engine = settings ? localContainerEngine(*settings) : std::string();
    const auto docker = findDocker(search.machine);
    if (!engine || !docker)
        return {};
    DockerStatus status = {.state = DockerState::notRunning, .engine = *engine};
    const auto text =
        runDocker(*search.machine.shell, *docker, *engine,
                  {"system", "df", "--format", "{{.Type}}\t{{.Reclaimable}}"}, search.control.stop);
    if (text)
        status.rows = parseDockerUsage(*text);
    if (!status.rows.empty())
        status.state = DockerState::available;
    return status;
}

std::int64_t estimatedReclaimableBytes(const std::vector<DockerRow> &rows)
{
    std::int64_t bytes = 0;
    for (const DockerRow &row : rows)
        bytes = saturatedSum(bytes, parseByteString(row.reclaimable.toStdString()));
    return bytes;
}

DockerPrune clutterOf(const DockerStatus &status)
{
    return {estimatedReclaimableBytes(status.rows), status.engine};
}

bool prune(const Machine &machine, const std::string &engine)
{
    const auto docker = findDocker(machine);
    if (!docker || (machine.cleanup.containers && engine.empty()))
        return false;
    runDocker(*machine.shell, *docker, engine, {"system", "prune", "-af"});
    return true;
}

} // namespace swabby::DeveloperCleanup
