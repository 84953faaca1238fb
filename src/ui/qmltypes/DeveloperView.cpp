#include "ui/qmltypes/DeveloperView.h"

#include "ui/qmltypes/MainWindowCoordinator.h"

namespace swabby {

DeveloperView::DeveloperView(const UserInterfaceContext &context, MainWindowCoordinator &coordinator,
                             QObject *parent)
    : QObject(parent), m_context(context), m_coordinator(coordinator)
{
}

} // namespace swabby
