#include "ui/qmltypes/DeveloperView.h"

#include "cleanup/RemovalRun.h"
#include "engine/ByteCount.h"
#include "ui/qmltypes/MainWindowCoordinator.h"

#include <algorithm>
#include <iterator>

namespace swabby {
namespace {

/// The size of what is there, in words; empty for nothing.
QString sizeText(const RemovableItem *item)
{
    return item == nullptr ? QString() : fileByteCount(item->sizeBytes);
}

/// Of all of these together; empty for none.
QString sizeText(const std::vector<RemovableItem> &items)
{
    return items.empty() ? QString() : fileByteCount(totalBytes(items));
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
    connect(&m_context.cleanup, &CleanupFlow::removed, this, [this](const CleanupReport &report) {
        if (!report.left.empty())
            m_scans.lookAgain();
    });
}

void DeveloperView::show()
{
    const auto row = [this](const RemovableItem &item) {
        return removableRowText(item, false, m_context.state.machine().places.home);
    };
    m_runtimes.show(among<SimulatorRuntimeInfo>(found().items), row);
    m_toolCaches.show(among<CacheEntry>(found().items), row);
    Q_EMIT changed();
}

template <typename Kind>
const RemovableItem *DeveloperView::find() const
{
    for (const RemovableItem &item : found().items)
        if (std::holds_alternative<Kind>(item.kind))
            return &item;
    return nullptr;
}

void DeveloperView::ask(const RemovableItem *item)
{
    if (item != nullptr)
        m_coordinator.confirmation()->askToRemove({*item}, [this, item = *item] { m_scans.forget({item}); });
}

void DeveloperView::removeBuildCache()
{
    ask(find<DerivedData>());
}

void DeveloperView::removeListed(const QString &id)
{
    for (const RemovableItem &item : found().items)
        if (item.id == id) {
            ask(&item);
            return;
        }
}

void DeveloperView::removeDockerClutter()
{
    ask(find<DockerPrune>());
}

QString DeveloperView::buildCacheSize() const
{
    return sizeText(find<DerivedData>());
}

QString DeveloperView::runtimesSize() const
{
    return sizeText(among<SimulatorRuntimeInfo>(found().items));
}

QString DeveloperView::toolCachesSize() const
{
    return sizeText(among<CacheEntry>(found().items));
}

QString DeveloperView::dockerSize() const
{
    return sizeText(find<DockerPrune>());
}

} // namespace swabby
