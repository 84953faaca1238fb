#include "ui/qmltypes/DeveloperView.h"

#include "cleanup/RemovalRun.h"
#include "engine/ByteCount.h"
#include "ui/qmltypes/MainWindowCoordinator.h"

namespace swabby {

using DeveloperCleanup::DockerState;

DeveloperView::DeveloperView(const UserInterfaceContext &context, MainWindowCoordinator &coordinator,
                             QObject *parent)
    : QObject(parent), m_context(context), m_coordinator(coordinator)
{
    if (m_context.state == nullptr)
        return;
    m_scan = std::make_unique<DeveloperScan>(*m_context.state);
    connect(m_scan.get(), &DeveloperScan::changed, this, &DeveloperView::show);
    if (m_context.cleanup != nullptr)
        connect(m_context.cleanup, &CleanupFlow::removed, this, [this](const CleanupSuccess &success) {
            if (!success.left.empty() && m_scan->hasForgotten())
                m_scan->begin();
        });
}

void DeveloperView::show()
{
    m_runtimes.show(m_scan->clutter().oldRuntimes, [this](const RemovableItem &item) {
        return removableRowText(item, false, m_context.state->machine().places.home);
    });
    Q_EMIT changed();
}

void DeveloperView::scan()
{
    if (m_scan)
        m_scan->begin();
}

void DeveloperView::stop()
{
    if (m_scan)
        m_scan->stop();
}

void DeveloperView::ask(const RemovableItem &item)
{
    m_coordinator.confirmation()->askToRemove({item}, [this, item] { m_scan->forget({item}); });
}

void DeveloperView::removeBuildCache()
{
    if (m_scan && m_scan->clutter().buildCacheBytes > 0)
        ask(RemovableItem::derivedData(m_scan->clutter().buildCacheBytes));
}

void DeveloperView::removeRuntime(const QString &id)
{
    if (!m_scan)
        return;
    for (const RemovableItem &item : m_scan->clutter().oldRuntimes)
        if (item.id == id) {
            ask(RemovableItem(item));
            return;
        }
}

void DeveloperView::removeDockerClutter()
{
    if (!dockerSize().isEmpty())
        ask(RemovableItem::dockerPrune(
            DeveloperCleanup::estimatedReclaimableBytes(m_scan->clutter().docker.rows)));
}

ScanText DeveloperView::text() const
{
    const QString firstAction = QStringLiteral("Scan developer clutter");
    if (!m_scan)
        return scanText(false, false, {}, firstAction);
    ScanText text = scanText(isScanning(), isDone(), m_scan->progress(), firstAction);
    if (isDone() && !isScanning() && m_scan->clutter().isEmpty())
        text.empty = QStringLiteral("No developer clutter found.");
    return text;
}

QString DeveloperView::clearable() const
{
    return m_scan ? clutterText(m_scan->clutter()) : QString();
}

QString DeveloperView::buildCacheSize() const
{
    const std::int64_t bytes = m_scan ? m_scan->clutter().buildCacheBytes : 0;
    return bytes > 0 ? fileByteCount(bytes) : QString();
}

QString DeveloperView::runtimesSize() const
{
    return m_scan && !m_scan->clutter().oldRuntimes.empty()
               ? fileByteCount(totalBytes(m_scan->clutter().oldRuntimes))
               : QString();
}

QString DeveloperView::dockerSize() const
{
    return m_scan && m_scan->clutter().docker.state == DockerState::available
               ? fileByteCount(DeveloperCleanup::estimatedReclaimableBytes(m_scan->clutter().docker.rows))
               : QString();
}

bool DeveloperView::dockerIsOff() const
{
    return m_scan && m_scan->clutter().docker.state == DockerState::notRunning;
}

QList<DockerRowText> DeveloperView::dockerRows() const
{
    return m_scan ? dockerRowTexts(m_scan->clutter().docker.rows) : QList<DockerRowText>();
}

} // namespace swabby
