#include "recording/Heard.h"

#include <utility>

namespace swabby {
namespace {

/// A service of the machine that hands on what another says.
template <typename Service>
class Listening : public Service {
public:
    Listening(std::unique_ptr<Service> service, std::shared_ptr<Heard> heard)
        : m_service(std::move(service)), m_heard(std::move(heard))
    {
    }

protected:
    template <typename Value>
    Value noted(Value Heard::*field, Value value)
    {
        (*m_heard).*field = value;
        return value;
    }

    const std::unique_ptr<Service> m_service;
    const std::shared_ptr<Heard> m_heard;
};

class ListeningKernel final : public Listening<KernelCounters> {
public:
    using Listening::Listening;
    std::optional<CpuTicks> cpuTicks() override
    {
        const auto ticks = m_service->cpuTicks();
        if (ticks)
            m_heard->ticks.push_back(*ticks);
        return ticks;
    }
    std::optional<CpuTicks> cpuTicksAtStart() override
    {
        return noted(&Heard::ticksAtStart, m_service->cpuTicksAtStart());
    }
    std::optional<MemoryPages> memoryPages() override
    {
        return noted(&Heard::pages, m_service->memoryPages());
    }
    std::uint64_t physicalMemory() override
    {
        return noted(&Heard::physicalBytes, m_service->physicalMemory());
    }
    std::uint64_t swapUsedBytes() override
    {
        return noted(&Heard::swapUsedBytes, m_service->swapUsedBytes());
    }
    VolumeCapacity startupVolume() override { return noted(&Heard::volume, m_service->startupVolume()); }
    ThermalState thermalState() override
    {
        m_heard->thermal.push_back(m_service->thermalState());
        return m_heard->thermal.back();
    }
};

class ListeningPower final : public Listening<PowerSupply> {
public:
    using Listening::Listening;
    std::optional<PowerSource> firstSource() override
    {
        return noted(&Heard::power, m_service->firstSource());
    }
    BatteryHealth healthAndCycles() override
    {
        return noted(&Heard::batteryHealth, m_service->healthAndCycles());
    }
};

class ListeningBoot final : public Listening<BootClock> {
public:
    using Listening::Listening;
    std::optional<double> bootEpoch() override { return noted(&Heard::bootEpoch, m_service->bootEpoch()); }
    std::optional<double> startEpoch(std::int32_t pid) override
    {
        const auto epoch = m_service->startEpoch(pid);
        if (epoch)
            m_heard->startEpochs[pid] = *epoch;
        return epoch;
    }
};

class ListeningStartup final : public Listening<StartupSource> {
public:
    using Listening::Listening;
    std::vector<StartupEntry> entries() override { return noted(&Heard::startup, m_service->entries()); }
};

class ListeningSurvey final : public Listening<ProcessSurvey> {
public:
    using Listening::Listening;
    std::optional<std::vector<ProcessRow>> busiest() override
    {
        return noted(&Heard::busiest, m_service->busiest());
    }
    std::optional<std::vector<ProcessRow>> largest() override
    {
        return noted(&Heard::largest, m_service->largest());
    }
    std::vector<ProcessRow> matching(const std::unordered_set<std::int32_t> &pids) override
    {
        std::vector<ProcessRow> rows = m_service->matching(pids);
        for (const ProcessRow &row : rows)
            m_heard->matched[row.pid] = row;
        return rows;
    }
    std::vector<ProcessRow> all() override { return m_service->all(); }
    std::vector<ProcessWeight> weights() override { return noted(&Heard::weights, m_service->weights()); }
    std::optional<std::uint64_t> memoryTogether(std::span<const std::int32_t> pids) override
    {
        return m_service->memoryTogether(pids);
    }
    std::vector<PowerRow> power() override { return noted(&Heard::drains, m_service->power()); }
    std::vector<NetworkRow> network() override { return noted(&Heard::traffic, m_service->network()); }
};

class ListeningSurveyor final : public Listening<ProcessSurveyor> {
public:
    using Listening::Listening;
    std::unique_ptr<ProcessSurvey> begin() override
    {
        return std::make_unique<ListeningSurvey>(m_service->begin(), m_heard);
    }
};

template <typename Listener, typename Service>
void listenIn(std::unique_ptr<Service> &service, const std::shared_ptr<Heard> &heard)
{
    service = std::make_unique<Listener>(std::move(service), heard);
}

} // namespace

std::shared_ptr<Heard> listenTo(Machine &machine)
{
    const auto heard = std::make_shared<Heard>();
    machine.shell->tell([heard](const ToolRun &run) {
        const std::scoped_lock guard(heard->mutex);
        heard->runs.push_back(run);
    });
    listenIn<ListeningKernel>(machine.kernel, heard);
    listenIn<ListeningPower>(machine.power, heard);
    listenIn<ListeningBoot>(machine.boot, heard);
    listenIn<ListeningStartup>(machine.startup, heard);
    listenIn<ListeningSurveyor>(machine.processes, heard);
    return heard;
}

} // namespace swabby
