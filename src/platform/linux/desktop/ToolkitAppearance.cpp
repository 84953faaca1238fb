#include "platform/linux/desktop/ToolkitAppearance.h"

#include "platform/linux/desktop/ToolkitSettings.h"

namespace swabby {
namespace {

constexpr auto propertyName = "_XSETTINGS_SETTINGS";

} // namespace

ToolkitAppearance::ToolkitAppearance() : m_owner("_XSETTINGS", propertyName, [this] { read(); })
{
    read();
}

void ToolkitAppearance::read()
{
    constexpr std::uint32_t most = 1U << 18; // in units of four bytes
    Appearance appearance;
    if (m_owner.window() != XCB_NONE) {
        const xcb_atom_t name = atomOf(m_owner.connection(), propertyName);
        const auto property = answer(xcb_get_property_reply(
            m_owner.connection(),
            xcb_get_property(m_owner.connection(), 0, m_owner.window(), name, XCB_ATOM_ANY, 0, most),
            nullptr));
        if (property && property->format == 8)
            appearance.prefersDark = prefersDark(parseToolkitSettings(
                {static_cast<const char *>(xcb_get_property_value(property.get())),
                 static_cast<std::size_t>(xcb_get_property_value_length(property.get()))}));
    }
    say(appearance);
}

} // namespace swabby
