#include "ui/qmltypes/CheckView.h"

#include "ui/qmltypes/MainWindowCoordinator.h"

namespace swabby {

CheckView::CheckView(const UserInterfaceContext &context, MainWindowCoordinator &coordinator, QObject *parent)
    : QObject(parent), m_context(context), m_coordinator(coordinator)
{
}

void CheckView::run() {}

} // namespace swabby
