#include "ui/qmltypes/StorageView.h"

#include "engine/ByteCount.h"
#include "ui/presentation/Gauges.h"
#include "ui/presentation/PlainWords.h"
#include "ui/presentation/ProcessText.h"
#include "ui/qmltypes/MainWindowCoordinator.h"

#include <algorithm>
#include <iterator>

namespace swabby {

StorageView::StorageView(const UserInterfaceContext &context, MainWindowCoordinator &coordinator,
                         QObject *parent)
    : QObject(parent), m_context(context), m_coordinator(coordinator)
{
    if (m_context.state == nullptr || m_context.ai == nullptr)
        return;
    m_scans = std::make_unique<StorageScans>(*m_context.state, *m_context.ai);
    connect(m_context.state, &AppState::changed, this, &StorageView::changed);
    connect(m_scans.get(), &StorageScans::changed, this, &StorageView::show);
    connect(m_scans.get(), &StorageScans::prepared, this, [this](const RemovableItem &item) {
        m_prepared.push_back(item);
        askForPrepared();
    });
    connect(m_coordinator.confirmation(), &ConfirmationView::changed, this, &StorageView::askForPrepared,
            Qt::QueuedConnection);
    if (m_context.cleanup != nullptr) {
        connect(m_context.cleanup, &CleanupFlow::removed, this, [this](const CleanupReport &report) {
            if (!report.left.empty())
                m_scans->lookAgain();
        });
        connect(m_context.cleanup, &CleanupFlow::restored, m_scans.get(), &StorageScans::lookAgain);
    }
    connect(m_scans.get(), &StorageScans::stillRuns, this, [this](const QString &name) {
        m_coordinator.setNotice(oneLine(name) + QStringLiteral(" is running — quit it first."));
    });
    show();
}

void StorageView::enter()
{
    if (!m_scans)
        return;
    if (!m_scans->isDone(ClutterKind::quickClean) && !m_scans->isScanning(ClutterKind::quickClean))
        m_scans->begin(ClutterKind::quickClean);
}

std::optional<ClutterKind> StorageView::scanOf(const RemovableList *list) const
{
    if (!m_scans)
        return std::nullopt;
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
        m_scans->begin(*scan);
}

void StorageView::stop(RemovableList *list)
{
    if (const auto scan = scanOf(list))
        m_scans->stop(*scan);
}

void StorageView::setSelected(const QString &id, bool isSelected)
{
    if (isSelected)
        m_selected.insert(id);
    else
        m_selected.erase(id);
    if (m_scans)
        show();
}

void StorageView::cleanUp()
{
    ask(m_queue);
}

void StorageView::uninstall(const QString &id)
{
    if (m_scans)
        m_scans->prepare(id);
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
    m_coordinator.confirmation()->askToRemove(items, [this, items] {
        for (const RemovableItem &item : items)
            m_selected.erase(item.id);
        m_scans->forget(items);
    });
}

bool StorageView::isScanning() const
{
    return m_quickClean.text().isScanning || m_duplicates.text().isScanning ||
           m_forgottenFiles.text().isScanning || m_applications.text().isScanning;
}

RemovableRowText StorageView::rowOf(const RemovableItem &item) const
{
    return removableRowText(item, m_selected.count(item.id) != 0, m_context.state->machine().places.home);
}

void StorageView::show()
{
    const auto row = [this](const RemovableItem &item) { return rowOf(item); };
    showQuickClean();
    m_duplicates.show(m_scans->findings(ClutterKind::duplicates).items, row);
    m_duplicates.setText(scanText(*m_scans, ClutterKind::duplicates, QStringLiteral("Scan for duplicates"),
                                  QStringLiteral("No duplicates found.")));
    m_forgottenFiles.show(m_scans->findings(ClutterKind::forgottenFiles).items, row);
    m_forgottenFiles.setText(scanText(*m_scans, ClutterKind::forgottenFiles, QStringLiteral("Scan"),
                                      QStringLiteral("No large old files found.")));
    showApplications();
    fillQueue();
    Q_EMIT changed();
}

void StorageView::showQuickClean()
{
    const StorageScans::Findings &findings = m_scans->findings(ClutterKind::quickClean);
    const std::size_t known = findings.items.size();
    std::size_t place = 0;
    m_quickClean.show(findings.offers(), [&](const RemovableItem &item) {
        RemovableRowText row = rowOf(item);
        if (place >= known)
            addVerdict(row, findings.suggestions.at(place - known));
        ++place;
        return row;
    });
    m_quickClean.setText(scanText(*m_scans, ClutterKind::quickClean, QStringLiteral("Scan"),
                                  QStringLiteral("No cache worth clearing was found.")));
}

void StorageView::showApplications()
{
    const StorageScans::Findings &findings = m_scans->findings(ClutterKind::applications);
    m_applications.show(findings.items, [&](const RemovableItem &item) {
        RemovableRowText row = rowOf(item);
        // What goes with it is known once it has been looked for.
        row.subtitle =
            findings.running.contains(item.id) ? QStringLiteral("Running — quit it first") : QString();
        row.details.clear();
        if (const auto *uninstall = std::get_if<AppUninstall>(&item.kind))
            row.tile = tileOf(item.title, uninstall->app.path);
        row.isBusy = m_scans->isPrepared(item.id);
        return row;
    });
    m_applications.setText(scanText(*m_scans, ClutterKind::applications,
                                    QStringLiteral("Show installed apps"),
                                    QStringLiteral("No applications that could be removed.")));
}

void StorageView::fillQueue()
{
    std::vector<RemovableItem> offers;
    for (const ClutterKind kind :
         {ClutterKind::quickClean, ClutterKind::duplicates, ClutterKind::forgottenFiles}) {
        const std::vector<RemovableItem> found = m_scans->findings(kind).offers();
        offers.insert(offers.end(), found.begin(), found.end());
    }
    m_clearableBytes = clearableBytes(offers);
    m_queue.clear();
    std::copy_if(offers.begin(), offers.end(), std::back_inserter(m_queue),
                 [&](const RemovableItem &item) { return m_selected.count(item.id) != 0; });
}

QString StorageView::freeText() const
{
    return m_context.state == nullptr ? QString() : fileByteCount(m_context.state->stats().diskFreeBytes);
}

QString StorageView::totalText() const
{
    return m_context.state == nullptr
               ? QString()
               : QStringLiteral("free of ") + fileByteCount(m_context.state->stats().diskTotalBytes);
}

double StorageView::usedFraction() const
{
    if (m_context.state == nullptr)
        return 0;
    return std::max(0.0, usedStorageFraction(m_context.state->stats()) - clearableFraction());
}

double StorageView::clearableFraction() const
{
    if (m_context.state == nullptr || m_context.state->stats().diskTotalBytes <= 0)
        return 0;
    const SystemStats &stats = m_context.state->stats();
    return std::clamp(static_cast<double>(m_clearableBytes) / static_cast<double>(stats.diskTotalBytes), 0.0,
                      usedStorageFraction(stats));
}

QString StorageView::clearableText() const
{
    return swabby::clearableText(m_clearableBytes);
}

QString StorageView::queueNote() const
{
    return m_queue.empty()
               ? QStringLiteral("Anything you choose to remove goes into the Cleanup Queue first. Review the "
                                "list, then clean up everything in one tap when you're ready.")
               : QString();
}

QString StorageView::queueText() const
{
    return swabby::queueText(m_queue);
}

QString StorageView::sentNote() const
{
    return m_scans && m_scans->findings(ClutterKind::quickClean).wasSent
               ? QStringLiteral("The suggestions were checked by Claude — only the folders' names and sizes "
                                "were sent.")
               : QString();
}

} // namespace swabby
