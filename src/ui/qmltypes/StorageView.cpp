#include "ui/qmltypes/StorageView.h"

#include "cleanup/Overlaps.h"
#include "flows/cleanup/QuitFlow.h"
#include "platform/BackgroundWork.h"
#include "platform/WhenDone.h"
#include "ui/presentation/Gauges.h"
#include "ui/presentation/NoticeText.h"
#include "ui/qmltypes/MainWindowCoordinator.h"

#include <algorithm>
#include <iterator>
#include <utility>

namespace swabby {

StorageView::StorageView(const UserInterfaceContext &context, MainWindowCoordinator &coordinator,
                         QObject *parent)
    : QObject(parent), m_context(context), m_coordinator(coordinator), m_scans(context.state, context.ai)
{
    connect(&m_context.state, &AppState::changed, this, &StorageView::changed);
    connect(&m_scans, &StorageScans::changed, this, &StorageView::show);
    connect(&m_scans, &StorageScans::prepared, this, [this](const RemovableItem &item) {
        m_prepared.push_back(item);
        askForPrepared();
    });
    connect(m_coordinator.confirmation(), &ConfirmationView::changed, this, &StorageView::askForPrepared,
            Qt::QueuedConnection);
    connect(&m_context.cleanup, &CleanupFlow::begun, this, [this](const std::vector<RemovableItem> &items) {
        for (const RemovableItem &item : items)
            m_selected.erase(item.id);
        m_scans.forget(items);
    });
    connect(&m_context.cleanup, &CleanupFlow::removed, this, [this](const CleanupReport &report) {
        m_scans.endRemoval(report.left);
        m_scans.readTrashAgain();
    });
    connect(&m_context.cleanup, &CleanupFlow::restored, this, [this] {
        m_scans.lookAgain();
        m_scans.readTrashAgain();
    });
    connect(&m_scans, &StorageScans::runsAs, this,
            [this](const ProcessSample &process) { m_coordinator.quit(process, Quitting::Force::no); });
    connect(&m_context.quitting, &QuitFlow::finished, &m_scans, &StorageScans::lookWhoRuns);
    connect(&m_scans, &StorageScans::stillRuns, this,
            [this](const QString &name) { m_coordinator.setNotice(noticeText(Notice::isRunning, name)); });
    show();
}

void StorageView::enter()
{
    if (!m_scans.isDone(ClutterKind::quickClean) && !m_scans.isScanning(ClutterKind::quickClean))
        m_scans.begin(ClutterKind::quickClean);
    m_scans.lookWhoRuns();
    if (packagedPrograms().isEmpty())
        return;
    const auto asking = m_context.systemCalls.ask(
        [machine = m_context.state.sharedMachine()] { return machine->workspace->softwareManager(); });
    whenDone(this, asking, [this](const QString &name) {
        m_softwareManager = softwareManagerText(name);
        Q_EMIT changed();
    });
}

void StorageView::openSoftwareManager()
{
    const auto opening = m_context.systemCalls.ask(
        [machine = m_context.state.sharedMachine()] { return machine->workspace->openSoftwareManager(); });
    whenDone(this, opening, [this](bool isOpened) {
        if (!isOpened)
            m_coordinator.setNotice(
                noticeText(Notice::nothingToShowWith, QStringLiteral("the software manager")));
    });
}

std::optional<ClutterKind> StorageView::scanOf(const RemovableList *list) const
{
    if (list == &m_quickClean)
        return ClutterKind::quickClean;
    if (list == &m_duplicates)
        return ClutterKind::duplicates;
    if (list == &m_forgottenFiles)
        return ClutterKind::forgottenFiles;
    return list == &m_applications ? std::optional(ClutterKind::applications) : std::nullopt;
}

void StorageView::scan(RemovableList *list)
{
    if (const auto scan = scanOf(list))
        m_scans.begin(*scan);
}

void StorageView::stop(RemovableList *list)
{
    if (const auto scan = scanOf(list))
        m_scans.stop(*scan);
}

void StorageView::setSelected(const QString &id, bool isSelected)
{
    if (isSelected)
        m_selected.insert(id);
    else
        m_selected.erase(id);
    show();
}

void StorageView::setAllSelected(RemovableList *list, bool isSelected)
{
    const auto scan = scanOf(list);
    if (!scan)
        return;
    for (const RemovableItem &item : m_scans.findings(*scan).offers()) {
        if (isSelected)
            m_selected.insert(item.id);
        else
            m_selected.erase(item.id);
    }
    show();
}

void StorageView::removeAlone(const QString &id)
{
    if (const SuggestedCache *suggestion = m_scans.findings(ClutterKind::quickClean).suggestionOf(id))
        ask({RemovableItem(suggestion->item)});
}

// One question at a time: an application's leftovers may have been found while another one is open.
void StorageView::askForPrepared()
{
    if (m_prepared.empty() || m_coordinator.confirmation()->isOpen())
        return;
    ask({m_prepared.front()});
    m_prepared.erase(m_prepared.begin());
}

void StorageView::ask(const std::vector<RemovableItem> &items)
{
    m_coordinator.confirmation()->askToRemove(items);
}

RemovableRowText StorageView::rowOf(const RemovableItem &item) const
{
    return removableRowText(item, m_selected.count(item.id) != 0, m_context.state.machine().places.home);
}

void StorageView::show()
{
    const auto row = [this](const RemovableItem &item) { return rowOf(item); };
    showQuickClean();
    m_duplicates.show(m_scans.findings(ClutterKind::duplicates).items, row);
    m_duplicates.setText(scanText(m_scans, ClutterKind::duplicates));
    m_forgottenFiles.show(m_scans.findings(ClutterKind::forgottenFiles).items, row);
    m_forgottenFiles.setText(scanText(m_scans, ClutterKind::forgottenFiles));
    showApplications();
    fillQueue();
    Q_EMIT changed();
}

void StorageView::showQuickClean()
{
    const StorageScans::Findings &findings = m_scans.findings(ClutterKind::quickClean);
    const auto row = [&](const RemovableItem &item) {
        RemovableRowText text = rowOf(item);
        if (const SuggestedCache *suggestion = findings.suggestionOf(item.id))
            addVerdict(text, *suggestion);
        return text;
    };
    m_quickClean.show(findings.offers(), row);
    m_unfamiliar.show(findings.unfamiliar(), row);
    m_quickClean.setText(scanText(m_scans, ClutterKind::quickClean));
}

void StorageView::showApplications()
{
    m_applications.show(m_scans.findings(ClutterKind::applications).items, [&](const RemovableItem &item) {
        RemovableRowText row = rowOf(item);
        describeApplication(row, item, m_scans);
        return row;
    });
    m_applications.setText(scanText(m_scans, ClutterKind::applications));
}

void StorageView::fillQueue()
{
    std::vector<RemovableItem> offers;
    for (const ClutterKind kind :
         {ClutterKind::quickClean, ClutterKind::duplicates, ClutterKind::forgottenFiles}) {
        std::vector<RemovableItem> found = m_scans.findings(kind).offers();
        std::ranges::move(found, std::back_inserter(offers));
    }
    m_clearableBytes = bytesTogether(offers);
    m_clearableText = isOfVolumeShown() ? clearableOfUsedText(offers) : swabby::clearableText(offers);
    m_queue.clear();
    for (RemovableItem &item : offers)
        if (m_selected.contains(item.id))
            m_queue.push_back(std::move(item));
    // What is not offered any more is not chosen when it comes back.
    if (isScanning())
        return;
    m_selected.clear();
    for (const RemovableItem &item : m_queue)
        m_selected.insert(item.id);
}

double StorageView::usedFraction() const
{
    return std::max(0.0, usedStorageFraction(m_context.state.stats()) - clearableFraction());
}

int StorageView::usedTint() const
{
    return static_cast<int>(storageTint(m_context.state.stats()));
}

// It lies in the home, which another volume has where the system's is named.
bool StorageView::isOfVolumeShown() const
{
    return m_context.state.stats().diskMountPoint != QLatin1String("/");
}

double StorageView::clearableFraction() const
{
    const SystemStats &stats = m_context.state.stats();
    if (stats.diskTotalBytes <= 0 || !isOfVolumeShown())
        return 0;
    return std::clamp(static_cast<double>(m_clearableBytes) / static_cast<double>(stats.diskTotalBytes), 0.0,
                      usedStorageFraction(stats));
}

} // namespace swabby
