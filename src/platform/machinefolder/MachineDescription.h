#pragma once

#include "platform/CleanupPlaces.h"
#include "platform/KernelCounters.h"
#include "platform/Permissions.h"
#include "platform/PowerSupply.h"
#include "platform/RunningApplications.h"

#include <QtCore/QJsonObject>

#include <atomic>
#include <filesystem>
#include <memory>
#include <optional>
#include <set>
#include <vector>

namespace swabby {

/// An application of a description, and whether it quits when it is asked to.
struct DescribedApplication {
    RunningApplication application;
    bool terminates = true;
};

/// What a machine folder's machine.json says. Every key may be missing; a value of the wrong type counts
/// as missing.
class MachineDescription {
public:
    /// No value when the folder holds no machine.json with a JSON object; problem says so in one line.
    static std::shared_ptr<MachineDescription> read(const QString &folder, QString *problem);

    explicit MachineDescription(QJsonObject facts) : m_facts(std::move(facts)) {}

    /// The fixed clock, seconds since 1970.
    std::optional<double> now() const;
    /// The next processor sample; the last one repeats.
    std::optional<CpuTicks> nextCpuTicks();
    /// What the counters said when somebody began to look.
    std::optional<CpuTicks> cpuTicksAtStart() const;
    std::optional<MemoryPages> memoryPages() const;
    std::uint64_t physicalMemory() const;
    std::uint64_t swapUsedBytes() const;
    VolumeCapacity disk() const;
    /// The next refresh's thermal state; the last one repeats.
    ThermalState nextThermalState();
    std::optional<PowerSource> powerSource() const;
    std::uint32_t userId() const;
    std::optional<std::int32_t> ownProcessId() const;
    QString bundleId() const;
    /// Without those that have no pid.
    std::vector<DescribedApplication> runningApplications() const;
    std::set<std::int32_t> unsignalablePids() const;
    /// Where the folder of caches lies below the home folder; empty where a Mac has it.
    std::filesystem::path cachesFolder() const;
    /// Caches that only another kind of machine knows, by their paths below the home folder.
    std::vector<KnownCache> knownCaches() const;
    /// What cannot be moved to the Trash, nor anything under it.
    std::vector<std::filesystem::path> trashRefuses() const;
    /// What its person does not let Swabby do.
    Permissions::Refused notAllowed() const;

private:
    QJsonObject m_facts;
    std::atomic<int> m_cpuSamples = 0;
    std::atomic<int> m_thermalSamples = 0;
};

} // namespace swabby
