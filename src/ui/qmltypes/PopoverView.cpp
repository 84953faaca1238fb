#include "ui/qmltypes/PopoverView.h"

namespace swabby {

PopoverView::PopoverView(const UserInterfaceContext &context, QObject *parent)
    : QObject(parent), m_context(context)
{
}

} // namespace swabby
