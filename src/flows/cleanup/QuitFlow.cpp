#include "flows/cleanup/QuitFlow.h"

#include <QCoroFuture>

#include <algorithm>

namespace swabby {
namespace {

/// A tool that hangs holds up its own question only.
constexpr int questionsAtOnce = 8;

/// So long a program that was asked and goes on is told more firmly when it is to be quit again.
constexpr std::chrono::seconds memory(120);

} // namespace

QuitFlow::QuitFlow(AppState &state)
    : m_state(state),
      m_work(questionsAtOnce, Urgency::isWaitedFor),
      m_telling(questionsAtOnce, Urgency::isWaitedFor),
      m_waits(questionsAtOnce)
{
}

QFuture<QuitPlan> QuitFlow::plan(const ProcessSample &shown, Quitting::Force force)
{
    using Quitting::Means;
    const auto machine = m_state.sharedMachine();
    const auto look = [machine, shown] { return Quitting::identify(shown, *machine); };
    if (force == Quitting::Force::yes || asksAll())
        return QtFuture::makeReadyFuture(
            QuitPlan{m_work.ask(look), force == Quitting::Force::yes ? Means::kill : Means::question});
    return m_work.ask([machine, look, asked = m_asked, now = machine->clock->now()] {
        const std::optional<ProcessIdentity> process = look();
        QuitPlan plan = {QtFuture::makeReadyFuture(process)};
        plan.isAnew = std::any_of(asked.begin(), asked.end(), [&](const Asked &one) {
            const double age = now - one.time; // negative where the clock was set back
            return one.process == process && age >= 0 && age < static_cast<double>(memory.count());
        });
        if (process && !plan.isAnew)
            plan.means = Quitting::gentlestMeans(*process, *machine);
        return plan;
    });
}

QCoro::Task<Quitting::Outcome> QuitFlow::quit(ProcessSample shown, QuitPlan plan)
{
    using Quitting::Outcome;
    const StopToken stop = m_quits.join();
    const auto process = co_await plan.identity;
    if (stop.stopRequested())
        co_return Outcome::notTold;
    Outcome outcome = Outcome::notTold;
    if (process) {
        const auto quitting = m_telling.ask([machine = m_state.sharedMachine(), process, plan, stop] {
            return Quitting::quit(*process, plan.means, *machine, stop);
        });
        outcome = co_await quitting;
    }
    if (stop.stopRequested())
        co_return outcome;
    finish(shown.pid, outcome);
    if (outcome != Outcome::isAsked && outcome != Outcome::runsOn)
        co_return outcome;
    if (plan.means == Quitting::Means::question)
        m_asked.push_back({*process, m_state.machine().clock->now()});
    const auto waiting = m_waits.ask([machine = m_state.sharedMachine(), process, stop] {
        return machine->processControl->endsWithin(memory, *process, stop);
    });
    const auto hasEnded = co_await waiting;
    if (!stop.stopRequested() && hasEnded.value_or(false))
        finish(shown.pid, Outcome::ended);
    co_return outcome;
}

void QuitFlow::finish(std::int32_t pid, Quitting::Outcome outcome)
{
    if (isOver(outcome))
        m_state.removeProcess(pid);
    Q_EMIT finished(pid, outcome);
}

} // namespace swabby
