#include "cleanup/DeveloperCleanup.h"

#include "cleanup/DiskUsage.h"
#include "engine/SaturatedBytes.h"

namespace swabby::DeveloperCleanup {

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
    for (const std::string &candidate : machine.cleanup.containerTools) {
        std::error_code problem;
        if (std::filesystem::exists(machine.cleanup.root.native() + candidate, problem))
            return candidate;
    }
    return std::nullopt;
}

DockerStatus dockerStatus(const Search &search)
{
    const auto docker = findDocker(search.machine);
    if (!docker)
        return {.state = DockerState::notInstalled, .rows = {}};
    const auto text =
        search.machine.shell->run(*docker, {"system", "df", "--format", "{{.Type}}\t{{.Reclaimable}}"},
                                  ToolOutput::bothStreams, search.control.stop);
    std::vector<DockerRow> rows = text ? parseDockerUsage(*text) : std::vector<DockerRow>();
    if (rows.empty())
        return {.state = DockerState::notRunning, .rows = {}};
    return {.state = DockerState::available, .rows = std::move(rows)};
}

std::int64_t estimatedReclaimableBytes(const std::vector<DockerRow> &rows)
{
    std::int64_t bytes = 0;
    for (const DockerRow &row : rows)
        bytes = saturatedSum(bytes, parseByteString(row.reclaimable.toStdString()));
    return bytes;
}

bool prune(const Machine &machine)
{
    const auto docker = findDocker(machine);
    if (docker)
        machine.shell->run(*docker, {"system", "prune", "-af"});
    return docker.has_value();
}

} // namespace swabby::DeveloperCleanup
