#include "flows/startup/StartupFlow.h"

#include "startup/LoginItemActions.h"
#include "startup/LoginItemScanner.h"

#include <QCoroFuture>

#include <QtCore/QPointer>

namespace swabby {
namespace {

constexpr int actionsAtOnce = 4;

} // namespace

StartupFlow::StartupFlow(AppState &state) : m_state(state), m_work(actionsAtOnce) {}

void StartupFlow::disable(const LoginItem &item)
{
    change(item, &LoginItemActions::disable);
}

void StartupFlow::enable(const LoginItem &item)
{
    change(item, &LoginItemActions::enable);
}

QCoro::Task<> StartupFlow::change(LoginItem item, bool (*act)(const LoginItem &, StartupControl &))
{
    const QPointer self(this);
    const auto acting = m_work.ask(
        [machine = m_state.sharedMachine(), item, act] { return act(item, *machine->startupControl); });
    const bool isDone = co_await acting;
    if (!self)
        co_return;
    if (isDone && act == &LoginItemActions::disable)
        m_state.removeLoginItem(item.id());
    Q_EMIT changed(item.id(), isDone);
    lookForDisabled();
    // What was turned on is listed again; what could not be turned off may have ended all the same.
    if (isDone == (act == &LoginItemActions::enable))
        m_state.refresh();
}

void StartupFlow::lookForDisabled()
{
    look();
}

QCoro::Task<> StartupFlow::look()
{
    const QPointer self(this);
    const int number = ++m_looks;
    const auto looking = m_work.ask([machine = m_state.sharedMachine()] {
        return LoginItemScanner::disabledItems(*machine->startupControl);
    });
    const QList<LoginItem> items = co_await looking;
    // An older look may come in after a newer one.
    if (!self || number != m_looks || items == m_disabledItems)
        co_return;
    m_disabledItems = items;
    Q_EMIT disabledItemsChanged();
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
QCoro::Task<> StartupFlow::open(QString path)
{
    const QPointer self(this);
    const auto opening = m_work.ask([machine = m_state.sharedMachine(), path] {
        return path.isEmpty() ? machine->workspace->openLoginItemSettings()
                              : machine->workspace->reveal(path);
    });
    const bool isOpened = co_await opening;
    if (self && !isOpened)
        Q_EMIT nothingOpened();
}

} // namespace swabby
