#include "ui/qmltypes/CheckView.h"

#include "flows/cleanup/QuitFlow.h"
#include "flows/startup/StartupFlow.h"
#include "settings/Settings.h"
#include "ui/presentation/PlainWords.h"
#include "ui/qmltypes/MainWindowCoordinator.h"

#include <QtCore/QTimer>
#include <QtQml/QQmlEngine>

namespace swabby {

CheckView::CheckView(const UserInterfaceContext &context, MainWindowCoordinator &coordinator, QObject *parent)
    : QObject(parent), m_context(context), m_coordinator(coordinator)
{
    QJSEngine::setObjectOwnership(&m_startupItems, QJSEngine::CppOwnership);
    if (m_context.state == nullptr || m_context.ai == nullptr)
        return;
    m_check = std::make_unique<FullCheck>(*m_context.state, *m_context.ai);
    connect(m_check.get(), &FullCheck::changed, this, &CheckView::follow);
    connect(m_check.get(), &FullCheck::lookingAtChanged, this, &CheckView::lookingAtChanged);
    connect(m_check.get(), &FullCheck::finished, this, &CheckView::finished);
    connect(m_context.state, &AppState::changed, this, [this] {
        if (!isScanning())
            showStartupItems();
    });
    if (m_context.cleanup != nullptr)
        connect(m_context.cleanup, &CleanupFlow::removed, this, &CheckView::takeBackWhatStayed);
    if (m_context.startup != nullptr)
        connect(m_context.startup, &StartupFlow::busyChanged, this, &CheckView::changed);
    if (m_context.quitting != nullptr)
        connect(m_context.quitting, &QuitFlow::finished, this, [this](std::int32_t pid, bool wasTold) {
            const auto &process = m_check->result().processToWatch;
            m_hasQuit = m_hasQuit || (wasTold && process && process->pid == pid);
            Q_EMIT changed();
        });
}

CheckView::~CheckView()
{
    // What the check says while it ends is not shown any more.
    if (m_context.state != nullptr)
        m_context.state->disconnect(this);
    if (m_check)
        m_check->disconnect(this);
}

bool CheckView::isScanning() const
{
    return m_check && (m_isBeginning || m_check->phase() == FullCheck::Phase::scanning);
}

int CheckView::enter()
{
    m_isStopped = false;
    m_isBeginning = m_check != nullptr;
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
    if (visit != m_visit || !m_check)
        return;
    m_isBeginning = false;
    m_check->cancel();
}

void CheckView::run()
{
    m_isBeginning = false;
    m_isStopped = false;
    m_hasQuit = false;
    m_removing.clear();
    if (m_check)
        m_check->run();
}

void CheckView::cancel()
{
    if (!isScanning())
        return;
    m_isStopped = true;
    m_isBeginning = false;
    m_check->cancel();
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
    const std::set<QString> &selected = m_check->selectedRemovalIDs();
    m_candidates.show(m_check->result().removalCandidates, [&](const RemovableItem &item) {
        return removableRowText(item, selected.contains(item.id), m_context.state->machine().places.home);
    });
    showStartupItems();
}

// What starts by itself changes with every refresh, the other findings only with the check.
void CheckView::showStartupItems()
{
    m_startupItems.show(startupReviewTexts(*m_check, m_context.state->loginItems()),
                        [](const StartupRowText &row) { return row.id; });
}

QList<CheckStep> CheckView::steps() const
{
    return checkSteps(m_check ? m_check->completedSteps() : QStringList());
}

QString CheckView::lookingAt() const
{
    if (!isScanning())
        return {};
    // What is left then is to ask about unknown caches and to sum up.
    const bool isThrough = m_check->completedSteps().size() == FullCheck::steps().size();
    return isThrough ? QStringLiteral("Summing up…") : lookingAtText(m_check->lookingAt());
}

QString CheckView::namesNote() const
{
    return m_context.state == nullptr
               ? QString()
               : namesSentText(Settings(*m_context.state->machine().settings).value(setting<"aiEnabled">));
}

QString CheckView::headline() const
{
    return m_check ? oneLine(m_check->result().headline) : QString();
}

QString CheckView::summary() const
{
    return m_check ? m_check->result().summary : QString();
}

QString CheckView::sentNote() const
{
    return m_check ? sentText(m_check->result()) : QString();
}

bool CheckView::isAllClear() const
{
    return m_check && m_check->result().findings() == 0;
}

QString CheckView::removeLabel() const
{
    return m_check ? m_check->removeLabel() : QString();
}

bool CheckView::canRemove() const
{
    return m_check && !m_check->selectedItems().empty();
}

bool CheckView::hasWatched() const
{
    return m_check && m_check->result().processToWatch && !m_hasQuit;
}

ProcessRowText CheckView::watched() const
{
    return hasWatched() ? watchedText(*m_check->result().processToWatch) : ProcessRowText();
}

QStringList CheckView::busyItems() const
{
    return m_context.startup == nullptr ? QStringList() : m_context.startup->busyIds();
}

void CheckView::setSelected(const QString &id, bool isSelected)
{
    if (m_check)
        m_check->setSelected(id, isSelected);
}

void CheckView::remove()
{
    if (!canRemove())
        return;
    const std::vector<RemovableItem> items = m_check->selectedItems();
    m_coordinator.confirmation()->askToRemove(items, [this, items] {
        m_removing = items;
        m_check->forget(items);
    });
}

void CheckView::takeBackWhatStayed(const CleanupReport &report)
{
    const std::vector<RemovableItem> removed = std::exchange(m_removing, {});
    std::vector<RemovableItem> left;
    std::copy_if(report.left.begin(), report.left.end(), std::back_inserter(left),
                 [&](const RemovableItem &item) {
                     return std::find(removed.begin(), removed.end(), item) != removed.end();
                 });
    if (!left.empty())
        m_check->takeBack(left);
}

void CheckView::disable(const QString &id)
{
    if (!m_check || m_context.startup == nullptr)
        return;
    for (const LoginItem &item : m_check->result().loginItemsToReview)
        if (item.id() == id) {
            m_context.startup->disable(LoginItem(item));
            return;
        }
}

void CheckView::ignore(const QString &id)
{
    if (m_check)
        m_check->dismiss(id);
}

void CheckView::explain()
{
    if (hasWatched())
        m_coordinator.explain({*m_check->result().processToWatch});
}

void CheckView::quit()
{
    if (hasWatched())
        m_coordinator.quit(*m_check->result().processToWatch, Quitting::Force::no);
}

} // namespace swabby
