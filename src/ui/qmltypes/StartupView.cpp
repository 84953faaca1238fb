#include "ui/qmltypes/StartupView.h"

#include "ui/presentation/NoticeText.h"
#include "ui/presentation/StartupText.h"
#include "ui/qmltypes/MainWindowCoordinator.h"

#include <algorithm>

namespace swabby {

StartupView::StartupView(const UserInterfaceContext &context, MainWindowCoordinator &coordinator,
                         QObject *parent)
    : QObject(parent), m_context(context), m_coordinator(coordinator)
{
    StartupFlow *flow = &m_context.startup;
    connect(flow, &StartupFlow::disabledItemsChanged, this, &StartupView::showDisabled);
    connect(flow, &StartupFlow::busyChanged, this, &StartupView::busyChanged);
    connect(flow, &StartupFlow::failed, this, [this](StartupChange change, const QString &label) {
        m_coordinator.setNotice(startupFailureText(change, label));
    });
    connect(flow, &StartupFlow::nothingOpened, this, [this](const QString &path) {
        const QString settings = QStringLiteral("the startup settings");
        m_coordinator.setNotice(noticeText(Notice::nothingToShowWith, path.isEmpty() ? settings : path));
    });
    showDisabled();
}

const LoginItem *StartupView::find(const QString &id) const
{
    const QList<LoginItem> &items = m_context.state.loginItems();
    const auto item =
        std::find_if(items.begin(), items.end(), [&](const LoginItem &known) { return known.id() == id; });
    return item == items.end() ? nullptr : &*item;
}

void StartupView::explain(const QString &id)
{
    if (const LoginItem *item = find(id))
        m_coordinator.explain({*item});
}

void StartupView::disable(const QString &id)
{
    const LoginItem *item = find(id);
    if (item != nullptr)
        m_context.startup.disable(LoginItem(*item));
}

void StartupView::enable(const QString &id)
{
    for (const LoginItem &item : m_context.startup.disabledItems())
        if (item.id() == id) {
            m_context.startup.enable(LoginItem(item));
            return;
        }
}

void StartupView::follow(int command, const QString &id)
{
    if (static_cast<RowCommand>(command) == RowCommand::openLoginItemSettings)
        openSettings();
    else if (const LoginItem *item = find(id))
        m_context.startup.reveal(item->plistPath);
}

QStringList StartupView::busyIds() const
{
    return m_context.startup.busyIds();
}

void StartupView::showDisabled()
{
    m_disabled.show(disabledRowTexts(m_context.startup.disabledItems(), m_context.state.machine().words),
                    [](const StartupRowText &row) { return row.id; });
}

} // namespace swabby
