#include "ui/qmltypes/StorageView.h"

#include "ui/qmltypes/MainWindowCoordinator.h"

namespace swabby {

StorageView::StorageView(const UserInterfaceContext &context, MainWindowCoordinator &coordinator,
                         QObject *parent)
    : QObject(parent), m_context(context), m_coordinator(coordinator)
{
}

} // namespace swabby
