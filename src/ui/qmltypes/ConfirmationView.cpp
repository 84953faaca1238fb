#include "ui/qmltypes/ConfirmationView.h"

#include "flows/cleanup/QuitFlow.h"
#include "ui/presentation/NoticeText.h"

#include <utility>

namespace swabby {

ConfirmationView::ConfirmationView(const UserInterfaceContext &context, QObject *parent)
    : QObject(parent), m_context(context)
{
    // Another window may have asked for another one.
    connect(&m_context.quitting, &QuitFlow::finished, this, [this](std::int32_t pid, bool wasTold) {
        if (!m_quitting || m_quitting->pid != pid)
            return;
        const QString name = std::exchange(m_quitting, std::nullopt)->name;
        Q_EMIT quitEnded(wasTold ? QString() : noticeText(Notice::notQuit, name));
    });
}

void ConfirmationView::askToQuit(const ProcessSample &process, Quitting::Force force)
{
    // What offers to quit may have been on the screen from before this was known.
    if (process.holdsSession) {
        Q_EMIT quitEnded(noticeText(Notice::holdsSession, process.name));
        return;
    }
    const ConfirmationInfo info = ConfirmationBuilder::quit(process, force, m_context.quitting);
    open(info, confirmationText(info, process.name));
    m_asked = process;
}

void ConfirmationView::askToRemove(const std::vector<RemovableItem> &items,
                                   const std::function<void()> &onRemoved)
{
    if (items.empty())
        return;
    const ConfirmationInfo info = ConfirmationBuilder::remove(items, m_context.cleanup, onRemoved);
    ConfirmationText text = confirmationText(info, {});
    for (const RemovableItem &item : items)
        text.details += removalDetails(item, m_context.state.machine().places.home);
    open(info, text);
}

void ConfirmationView::open(const ConfirmationInfo &info, const ConfirmationText &text)
{
    m_asked.reset();
    m_info = info;
    m_text = text;
    int place = 0;
    m_details.show(text.details, [&](const RemovalDetail &) { return QString::number(place++); });
    Q_EMIT changed();
}

void ConfirmationView::confirm()
{
    const auto info = std::exchange(m_info, std::nullopt);
    if (m_asked)
        m_quitting = std::exchange(m_asked, std::nullopt);
    Q_EMIT changed();
    if (info && info->onConfirm)
        info->onConfirm();
}

void ConfirmationView::cancel()
{
    m_info.reset();
    Q_EMIT changed();
}

} // namespace swabby
