#include "flows/cleanup/QuitFlow.h"

#include <QCoroFuture>

namespace swabby {
namespace {

/// A tool that hangs holds up its own question only.
constexpr int questionsAtOnce = 8;

} // namespace

QuitFlow::QuitFlow(AppState &state) : m_state(state), m_work(questionsAtOnce) {}

QFuture<std::optional<ProcessIdentity>> QuitFlow::identify(const ProcessSample &shown)
{
    return m_work.ask(
        [machine = m_state.sharedMachine(), shown] { return Quitting::identify(shown, *machine); });
}

QCoro::Task<bool> QuitFlow::quit(ProcessSample shown, QFuture<std::optional<ProcessIdentity>> identity,
                                 Quitting::Force force)
{
    const StopToken stop = m_quits.join();
    const auto process = co_await identity;
    if (stop.stopRequested())
        co_return false;
    bool wasTold = false;
    if (process) {
        const auto quitting = m_work.ask([machine = m_state.sharedMachine(), process, force] {
            return Quitting::quit(*process, force, *machine);
        });
        wasTold = co_await quitting;
    }
    if (stop.stopRequested())
        co_return wasTold;
    if (wasTold)
        m_state.removeProcess(shown.pid);
    Q_EMIT finished(shown.pid, wasTold);
    co_return wasTold;
}

} // namespace swabby
