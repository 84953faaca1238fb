#pragma once

#include "cleanup/DeveloperToolText.h"
#include "cleanup/Search.h"

#include <string>
#include <variant>
#include <vector>

/// Measures and clears what developers' tools pile up. Every call blocks for the disk and for tools:
/// background work only.
namespace swabby::DeveloperCleanup {

enum class DockerState { available, notInstalled, notRunning };

struct DockerStatus {
    DockerState state = DockerState::notInstalled;
    std::vector<DockerRow> rows{}; ///< some when available, else none
    std::string engine{};          ///< the address of the one asked; empty when the tool finds it by itself

    bool operator==(const DockerStatus &) const = default;
};

/// What emptying the build cache would free; 0 when there is none.
std::int64_t derivedDataSize(const Search &search);

/// Deletes everything in the build cache except what must stay. False when something stayed.
bool clearDerivedData(const Machine &machine, const ExcludeList &excludes);

/// Longest unused first.
std::vector<SimulatorRuntimeInfo> scanSimulatorRuntimes(const Search &search);

/// Asks the simulator tool to delete each of these; it does not say in a dependable way whether it did.
void deleteSimulatorRuntimes(const Machine &machine, const std::vector<QString> &identifiers);

/// The container engine's program as the machine knows it.
std::optional<std::string> findDocker(const Machine &machine);

/// Not installed too when the tool works with an engine of another computer: that one is not asked.
DockerStatus dockerStatus(const Search &search);

/// The sum of what the rows say; what does not fit becomes the largest number.
std::int64_t estimatedReclaimableBytes(const std::vector<DockerRow> &rows);

/// What an engine that is available could do without.
DockerPrune clutterOf(const DockerStatus &status);

/// Lets the container engine of that address drop what it can do without. False when there is no engine.
bool prune(const Machine &machine, const std::string &engine);

} // namespace swabby::DeveloperCleanup
