#include "flows/startup/StartupFlow.h"

#include "startup/LoginItemActions.h"
#include "startup/LoginItemScanner.h"

namespace swabby {
namespace {

constexpr int actionsAtOnce = 4;

} // namespace

StartupFlow::StartupFlow(AppState &state) : m_state(state), m_work(actionsAtOnce) {}

void StartupFlow::change(const LoginItem &item, StartupChange change)
{
    const QString id = item.id();
    if (m_busyIds.contains(id))
        return;
    m_busyIds.append(id);
    Q_EMIT busyChanged();
    const auto act =
        change == StartupChange::turnOff ? &LoginItemActions::disable : &LoginItemActions::enable;
    const auto acting = m_work.ask(
        [machine = m_state.sharedMachine(), item, act] { return act(item, *machine->startupControl); });
    m_actions.whenDone(acting, [this, id, change, label = item.label](bool isDone) {
        m_busyIds.removeAll(id);
        if (isDone && change == StartupChange::turnOff)
            m_state.removeLoginItem(id);
        Q_EMIT busyChanged();
        if (!isDone)
            Q_EMIT failed(change, label);
        lookForDisabled();
        // Also what could not be turned off may have ended all the same.
        m_state.refreshAnew();
    });
}

void StartupFlow::lookForDisabled()
{
    m_looks.end(); // an older look may come in after a newer one
    const auto looking = m_work.ask([machine = m_state.sharedMachine()] {
        return LoginItemScanner::disabledItems(*machine->startupControl);
    });
    m_looks.whenDone(looking, [this](const QList<LoginItem> &items) {
        if (items == m_disabledItems)
            return;
        m_disabledItems = items;
        Q_EMIT disabledItemsChanged();
    });
}

void StartupFlow::noteLoginSetting()
{
    lookForDisabled();
    m_state.refresh();
}

void StartupFlow::reveal(const QString &path)
{
    if (!path.isEmpty())
        open(path);
}

void StartupFlow::openLoginItemSettings()
{
    open({});
}

// An empty path stands for the system's settings.
void StartupFlow::open(const QString &path)
{
    const auto opening = m_work.ask([machine = m_state.sharedMachine(), path] {
        return path.isEmpty() ? machine->workspace->openLoginItemSettings()
                              : machine->workspace->reveal(path);
    });
    m_actions.whenDone(opening, [this, path](bool isOpened) {
        if (!isOpened)
            Q_EMIT nothingOpened(path);
    });
}

} // namespace swabby
