#include "platform/linux/LinuxStartupSource.h"

#include "platform/linux/StartupLabels.h"
#include "platform/linux/UnitStates.h"

namespace swabby {

namespace {

/// A bus that says nothing for so long has nothing to say to this refresh.
constexpr std::chrono::milliseconds busPatience{1'000};

} // namespace

LinuxStartupSource::LinuxStartupSource(Sources sources)
    : m_sources(std::move(sources)),
      m_autostart(m_sources.autostart, m_sources.programs, m_sources.ownProgram),
      m_units(m_sources.units, m_sources.programs)
{
}

std::vector<StartupEntry> LinuxStartupSource::entries()
{
    const std::lock_guard lock(m_mutex);
    std::vector<StartupEntry> entries;
    addAutostart(entries);
    addUnits(entries);
    tellApart(entries);
    return entries;
}

void LinuxStartupSource::addAutostart(std::vector<StartupEntry> &entries)
{
    for (StartupEntry &entry : m_autostart.list()) {
        const std::string program = withoutLinks(entry.programPath.toStdString());
        // Something like /usr/bin/flatpak runs for other applications as well.
        const std::int32_t pid =
            isInterpreter(program)
                ? 0
                : m_sources.pidRunning(program, privateFolder(program, m_sources.programs));
        if (pid > 0) {
            entry.isLoaded = true;
            entry.pid = pid;
        }
        entries.push_back(std::move(entry));
    }
}

void LinuxStartupSource::addUnits(std::vector<StartupEntry> &entries)
{
    std::vector<EnabledUnit> units = m_units.list();
    const auto ask = [&](bool system, const std::string &bus) {
        std::vector<std::string> names;
        for (const EnabledUnit &unit : units) {
            if ((unit.entry.scope == LoginItemScope::globalDaemon) != system)
                continue;
            names.push_back(unit.unit);
            if (unit.service != unit.unit)
                names.push_back(unit.service);
        }
        return bus.empty() ? std::unordered_map<std::string, UnitState>()
                           : unitStates(bus, names, busPatience, m_sources.stop);
    };
    const auto systemStates = ask(true, m_sources.systemBus);
    const auto userStates = ask(false, m_sources.userBus);

    for (EnabledUnit &unit : units) {
        const auto &states = unit.entry.scope == LoginItemScope::globalDaemon ? systemStates : userStates;
        if (const auto state = states.find(unit.unit); state != states.end())
            unit.entry.isLoaded = state->second.isActive;
        if (const auto state = states.find(unit.service); state != states.end())
            unit.entry.pid = state->second.pid;
        entries.push_back(std::move(unit.entry));
    }
}

} // namespace swabby
