#include "ui/qmltypes/CheckView.h"

#include "flows/cleanup/QuitFlow.h"
#include "flows/startup/StartupFlow.h"
#include "ui/qmltypes/MainWindowCoordinator.h"

#include <algorithm>
#include <iterator>
#include <utility>
#include <variant>

namespace swabby {

CheckView::CheckView(const UserInterfaceContext &context, MainWindowCoordinator &coordinator, QObject *parent)
    : QObject(parent), m_context(context), m_coordinator(coordinator), m_check(context.state, context.ai)
{
    connect(&m_check, &FullCheck::changed, this, &CheckView::follow);
    connect(&m_check, &FullCheck::lookingAtChanged, this, &CheckView::lookingAtChanged);
    connect(&m_check, &FullCheck::finished, this, &CheckView::finished);
    connect(&m_context.state, &AppState::changed, this, [this] {
        if (!isScanning())
            showStartupItems();
    });
    connect(&m_context.cleanup, &CleanupFlow::begun, this, &CheckView::beginRemoval);
    connect(&m_context.cleanup, &CleanupFlow::removed, this, &CheckView::endRemoval);
    connect(&m_context.cleanup, &CleanupFlow::restored, this, &CheckView::takeBackWhatIsBack);
    connect(&m_context.startup, &StartupFlow::busyChanged, this, &CheckView::changed);
    connect(&m_context.quitting, &QuitFlow::finished, this,
            [this](std::int32_t pid, Quitting::Outcome outcome) {
                const auto &process = m_check.result().processToWatch;
                m_hasQuit = m_hasQuit || (isOver(outcome) && process && process->pid == pid);
                showWatched();
            });
}

CheckView::~CheckView()
{
    // What the check says while it ends is not shown any more.
    m_context.state.disconnect(this);
    m_check.disconnect(this);
}

int CheckView::enter()
{
    m_isStopped = false;
    m_isBeginning = true;
    Q_EMIT changed();
    // The page that appears depends on the state, which a check changes: not before it stands.
    QTimer::singleShot(0, this, [this, visit = ++m_visit] {
        if (m_isBeginning && visit == m_visit)
            run();
    });
    return m_visit;
}

void CheckView::leave(int visit)
{
    if (visit != m_visit)
        return;
    m_isBeginning = false;
    m_check.cancel();
}

void CheckView::run()
{
    m_isBeginning = false;
    m_isStopped = false;
    m_hasQuit = false;
    m_check.run();
}

void CheckView::cancel()
{
    if (!isScanning())
        return;
    m_isStopped = true;
    m_isBeginning = false;
    m_check.cancel();
    Q_EMIT changed();
}

void CheckView::follow()
{
    showRows();
    Q_EMIT lookingAtChanged();
    Q_EMIT changed();
}

void CheckView::showRows()
{
    const std::set<QString> &selected = m_check.selectedRemovalIDs();
    m_candidates.show(m_check.result().removalCandidates, [&](const RemovableItem &item) {
        return removableRowText(item, selected.contains(item.id), m_context.state.machine().places.home);
    });
    showStartupItems();
    showWatched();
}

void CheckView::showWatched()
{
    QList<ProcessRowText> rows;
    if (hasWatched())
        rows.append(watchedText(*m_check.result().processToWatch, m_context.state.machine().words));
    m_watched.show(rows, [](const ProcessRowText &row) { return QString::number(row.pid); });
}

// What starts by itself changes with every refresh, the other findings only with the check.
void CheckView::showStartupItems()
{
    m_startupItems.show(startupReviewTexts(m_check, m_context.state.loginItems()),
                        [](const StartupRowText &row) { return row.id; });
}

void CheckView::remove()
{
    if (canRemove())
        m_coordinator.confirmation()->askToRemove(m_check.selectedItems());
}

void CheckView::beginRemoval(const std::vector<RemovableItem> &items)
{
    // Removals that run side by side are put back together.
    if (!m_check.isRemoving()) {
        m_inTheTrash.clear();
        m_thingsInTheTrash = 0;
    }
    std::ranges::copy_if(items, std::back_inserter(m_inTheTrash), [](const RemovableItem &item) {
        return std::holds_alternative<DuplicateGroup>(item.kind) ||
               std::holds_alternative<DeepScanItem>(item.kind) ||
               std::holds_alternative<AppUninstall>(item.kind);
    });
    m_check.forget(items);
}

void CheckView::endRemoval(const CleanupReport &report)
{
    eraseEach(m_inTheTrash, report.left);
    m_thingsInTheTrash += report.canBePutBack;
    m_check.endRemoval(report.left);
    m_check.readTrashAgain();
}

void CheckView::takeBackWhatIsBack(qint64 restored, qint64 left)
{
    // What of it stayed in the Trash, or left it another way, nobody says.
    if (!m_check.isRemoving()) {
        const std::vector<RemovableItem> back = std::exchange(m_inTheTrash, {});
        const qint64 things = std::exchange(m_thingsInTheTrash, 0);
        if (left == 0 && restored == things)
            m_check.takeBack(back);
    }
    m_check.readTrashAgain();
}

void CheckView::disable(const QString &id)
{
    for (const LoginItem &item : m_check.result().loginItemsToReview)
        if (item.id() == id) {
            m_context.startup.disable(LoginItem(item));
            return;
        }
}

void CheckView::explain()
{
    if (hasWatched())
        m_coordinator.explain({*m_check.result().processToWatch});
}

void CheckView::quit()
{
    if (hasWatched())
        m_coordinator.quit(*m_check.result().processToWatch, Quitting::Force::no);
}

} // namespace swabby
