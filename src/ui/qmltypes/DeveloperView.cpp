#include "ui/qmltypes/DeveloperView.h"

#include "cleanup/Overlaps.h"
#include "engine/ByteCount.h"
#include "ui/qmltypes/MainWindowCoordinator.h"

#include <algorithm>
#include <iterator>

namespace swabby {
namespace {

/// Of all of these together; empty for none.
QString sizeText(const std::vector<RemovableItem> &items)
{
    return items.empty() ? QString() : fileByteCount(bytesTogether(items));
}

/// Those of that kind.
template <typename Kind>
std::vector<RemovableItem> among(const std::vector<RemovableItem> &items)
{
    std::vector<RemovableItem> chosen;
    std::copy_if(items.begin(), items.end(), std::back_inserter(chosen),
                 [](const RemovableItem &item) { return std::holds_alternative<Kind>(item.kind); });
    return chosen;
}

} // namespace

DeveloperView::DeveloperView(const UserInterfaceContext &context, MainWindowCoordinator &coordinator,
                             QObject *parent)
    : QObject(parent), m_context(context), m_coordinator(coordinator), m_scans(context.state, context.ai)
{
    connect(&m_scans, &StorageScans::changed, this, &DeveloperView::show);
    connect(&m_context.cleanup, &CleanupFlow::begun, &m_scans, &StorageScans::forget);
    connect(&m_context.cleanup, &CleanupFlow::removed, this,
            [this](const CleanupReport &report) { m_scans.endRemoval(report.left); });
}

void DeveloperView::show()
{
    const auto row = [this](const RemovableItem &item) {
        return removableRowText(item, false, m_context.state.machine().places.home);
    };
    m_buildCaches.show(among<DerivedData>(found().items), row);
    m_docker.show(among<DockerPrune>(found().items), row);
    m_runtimes.show(among<SimulatorRuntimeInfo>(found().items), row);
    m_toolCaches.show(among<CacheEntry>(found().items), row);
    Q_EMIT changed();
}

void DeveloperView::remove(const QString &id)
{
    for (const RemovableItem &item : found().items)
        if (item.id == id) {
            m_coordinator.confirmation()->askToRemove({item});
            return;
        }
}

QString DeveloperView::runtimesSize() const
{
    return sizeText(among<SimulatorRuntimeInfo>(found().items));
}

QString DeveloperView::toolCachesSize() const
{
    return sizeText(among<CacheEntry>(found().items));
}

} // namespace swabby
