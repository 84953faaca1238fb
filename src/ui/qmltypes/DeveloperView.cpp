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

std::vector<RemovableItem> runtimesAmong(const std::vector<RemovableItem> &items)
{
    std::vector<RemovableItem> runtimes;
    std::copy_if(items.begin(), items.end(), std::back_inserter(runtimes), [](const RemovableItem &item) {
        return std::holds_alternative<SimulatorRuntimeInfo>(item.kind);
    });
    return runtimes;
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
    m_runtimes.show(runtimesAmong(found().items), [this](const RemovableItem &item) {
        return removableRowText(item, false, m_context.state.machine().places.home);
    });
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

void DeveloperView::removeRuntime(const QString &id)
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
    const std::vector<RemovableItem> runtimes = runtimesAmong(found().items);
    return runtimes.empty() ? QString() : fileByteCount(totalBytes(runtimes));
}

QString DeveloperView::dockerSize() const
{
    return sizeText(find<DockerPrune>());
}

} // namespace swabby
