#include "ui/qmltypes/ConfirmationView.h"

#include "flows/cleanup/QuitFlow.h"
#include "platform/WhenDone.h"
#include "ui/presentation/NoticeText.h"
#include "ui/presentation/ProcessText.h"

#include <algorithm>
#include <utility>

namespace swabby {

ConfirmationView::ConfirmationView(const UserInterfaceContext &context, QObject *parent)
    : QObject(parent), m_context(context)
{
    // Another window may have asked for another one.
    connect(&m_context.quitting, &QuitFlow::finished, this,
            [this](std::int32_t pid, Quitting::Outcome outcome) {
                const auto found = std::find_if(m_quitting.begin(), m_quitting.end(),
                                                [pid](const Quit &quit) { return quit.process.pid == pid; });
                if (found == m_quitting.end())
                    return;
                const QString words = quitText(found->process, found->means, outcome);
                const QString before = std::exchange(found->said, words);
                if (isOver(outcome) || outcome == Quitting::Outcome::notTold)
                    m_quitting.erase(found);
                Q_EMIT quitEnded(words, before);
            });
}

void ConfirmationView::askToQuit(const ProcessSample &process, Quitting::Force force)
{
    // What offers to quit may have been on the screen from before this was known.
    if (!process.mayBeQuit()) {
        Q_EMIT quitEnded(notQuitHereText(process), {});
        return;
    }
    const auto ask = [this, process, question = ++m_question](const QuitPlan &plan) {
        if (question != m_question) // something else was asked about meanwhile
            return;
        ProcessSample named = process;
        named.name = programNames(process).first; // as its row has it
        const ConfirmationInfo info =
            ConfirmationBuilder::quit(process, plan, m_context.quitting, named.name);
        open(info, confirmationText(info, tileOf(process)), {});
        m_asked = Quit{named, plan.means, {}};
    };
    whenKnown(this, m_context.quitting.plan(process, force), ask);
}

void ConfirmationView::askToRemove(const std::vector<RemovableItem> &items,
                                   const std::function<void()> &onRemoved)
{
    if (items.empty())
        return;
    const ConfirmationInfo info = ConfirmationBuilder::remove(items, m_context.cleanup, onRemoved);
    open(info, confirmationText(info), items);
}

void ConfirmationView::open(const ConfirmationInfo &info, const ConfirmationText &text,
                            const std::vector<RemovableItem> &items)
{
    ++m_question;
    m_asked.reset();
    m_info = info;
    m_text = text;
    m_items = items;
    m_unfolded.clear();
    showLines();
    Q_EMIT changed();
}

void ConfirmationView::showLines()
{
    m_lines.show(removalLines(m_items, m_unfolded, m_context.state.machine().places.home),
                 [](const RemovalLine &line) { return line.key; });
}

void ConfirmationView::fold(int item)
{
    if (m_unfolded.erase(item) == 0)
        m_unfolded.insert(item);
    showLines();
}

void ConfirmationView::confirm()
{
    const auto info = std::exchange(m_info, std::nullopt);
    if (const auto quit = std::exchange(m_asked, std::nullopt)) {
        std::erase_if(m_quitting, [&](const Quit &one) { return one.process.pid == quit->process.pid; });
        m_quitting.push_back(*quit);
    }
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
