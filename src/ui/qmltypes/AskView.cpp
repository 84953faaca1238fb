#include "ui/qmltypes/AskView.h"

namespace swabby {

AskView::AskView(const UserInterfaceContext &context, QObject *parent) : QObject(parent), m_context(context)
{
}

} // namespace swabby
