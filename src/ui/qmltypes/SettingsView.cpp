#include "ui/qmltypes/SettingsView.h"

namespace swabby {

SettingsView::SettingsView(const UserInterfaceContext &context, QObject *parent)
    : QObject(parent), m_context(context)
{
}

} // namespace swabby
