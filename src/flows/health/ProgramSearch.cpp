#include "flows/health/ProgramSearch.h"

#include "engine/Samplers.h"

#include <utility>

namespace swabby {

QList<ProcessSample> everythingThatRuns(Machine &machine)
{
    return ProcessSampler::everything(*machine.processes->begin(), machine.ownProcessId);
}

std::optional<ProcessSample> programCalled(const QString &name, const QList<ProcessSample> &programs)
{
    if (name.trimmed().isEmpty())
        return std::nullopt;
    for (const ProcessSample &program : programs)
        if (program.name.compare(name, Qt::CaseInsensitive) == 0)
            return program;
    for (const ProcessSample &program : programs)
        if (program.name.contains(name, Qt::CaseInsensitive))
            return program;
    return std::nullopt;
}

ProgramSearch::ProgramSearch(AppState &state, BackgroundWork &work) : m_state(state), m_work(work)
{
    connect(&m_state, &AppState::applied, this, &ProgramSearch::look);
}

void ProgramSearch::setWanted(bool isWanted)
{
    if (isWanted == m_isWanted)
        return;
    m_isWanted = isWanted;
    if (isWanted)
        return look();
    m_look.end();
    m_programs.clear();
    Q_EMIT changed();
}

void ProgramSearch::look()
{
    m_wantsAnother = m_look.isUnderWay();
    if (!m_isWanted || m_wantsAnother)
        return;
    m_look.begin();
    const auto looking =
        m_work.ask([machine = m_state.sharedMachine()] { return everythingThatRuns(*machine); });
    m_look.whenDone(looking, [this](const QList<ProcessSample> &programs) {
        m_look.end();
        m_programs = programs;
        Q_EMIT changed();
        if (std::exchange(m_wantsAnother, false))
            look();
    });
}

} // namespace swabby
