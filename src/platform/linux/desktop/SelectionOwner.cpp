#include "platform/linux/desktop/SelectionOwner.h"

#include <QtGui/QGuiApplication>

#include <string>

namespace swabby {
namespace {

const xcb_screen_t *screenOf(xcb_connection_t *connection, int number)
{
    auto screen = xcb_setup_roots_iterator(xcb_get_setup(connection));
    while (number-- > 0 && screen.rem > 1)
        xcb_screen_next(&screen);
    return screen.data;
}

} // namespace

xcb_atom_t atomOf(xcb_connection_t *connection, std::string_view name)
{
    const auto cookie = xcb_intern_atom(connection, 0, static_cast<std::uint16_t>(name.size()), name.data());
    const auto reply = answer(xcb_intern_atom_reply(connection, cookie, nullptr));
    return reply ? reply->atom : xcb_atom_t{XCB_NONE};
}

SelectionOwner::SelectionOwner(std::string_view name, std::string_view property,
                               std::function<void()> changed)
    : m_changed(std::move(changed))
{
    const auto *native = qGuiApp->nativeInterface<QNativeInterface::QX11Application>();
    if (native == nullptr)
        return;
    m_connection = native->connection();
    char *host = nullptr;
    int display = 0;
    int number = 0;
    xcb_parse_display(nullptr, &host, &display, &number);
    std::free(host);
    m_screen = screenOf(m_connection, number);
    m_selection = atomOf(m_connection, std::string(name) + "_S" + std::to_string(number));
    m_comes = atomOf(m_connection, "MANAGER");
    if (!property.empty())
        m_property = atomOf(m_connection, property);
    qGuiApp->installNativeEventFilter(this);
    listenToRoot();
    look();
}

SelectionOwner::~SelectionOwner()
{
    if (m_connection != nullptr && qGuiApp != nullptr)
        qGuiApp->removeNativeEventFilter(this);
}

// A new owner says so on the root window. The toolkit listens there too, with the same connection.
void SelectionOwner::listenToRoot() const
{
    const auto attributes = answer(xcb_get_window_attributes_reply(
        m_connection, xcb_get_window_attributes(m_connection, m_screen->root), nullptr));
    if (!attributes)
        return;
    const std::uint32_t events = attributes->your_event_mask | XCB_EVENT_MASK_STRUCTURE_NOTIFY;
    xcb_change_window_attributes(m_connection, m_screen->root, XCB_CW_EVENT_MASK, &events);
}

void SelectionOwner::look()
{
    // Nobody may go between being found and being listened to.
    xcb_grab_server(m_connection);
    const auto owner = answer(xcb_get_selection_owner_reply(
        m_connection, xcb_get_selection_owner(m_connection, m_selection), nullptr));
    m_window = owner ? owner->owner : xcb_window_t{XCB_NONE};
    if (m_window != XCB_NONE) {
        // Both, since the toolkit may want both of the same window.
        const std::uint32_t events = XCB_EVENT_MASK_STRUCTURE_NOTIFY | XCB_EVENT_MASK_PROPERTY_CHANGE;
        xcb_discard_reply(m_connection, xcb_change_window_attributes_checked(m_connection, m_window,
                                                                             XCB_CW_EVENT_MASK, &events)
                                            .sequence);
    }
    xcb_ungrab_server(m_connection);
    xcb_flush(m_connection);
}

bool SelectionOwner::nativeEventFilter(const QByteArray &eventType, void *message, qintptr * /*result*/)
{
    if (eventType != "xcb_generic_event_t")
        return false;
    constexpr int sentByOthers = 0x80;
    const auto *event = static_cast<const xcb_generic_event_t *>(message);
    switch (event->response_type & ~sentByOthers) {
    case XCB_CLIENT_MESSAGE: {
        const auto *word = reinterpret_cast<const xcb_client_message_event_t *>(event);
        if (word->type != m_comes || word->data.data32[1] != m_selection)
            return false;
        look();
        break;
    }
    case XCB_DESTROY_NOTIFY: {
        const auto *end = reinterpret_cast<const xcb_destroy_notify_event_t *>(event);
        if (m_window == XCB_NONE || end->window != m_window)
            return false;
        look();
        break;
    }
    case XCB_PROPERTY_NOTIFY: {
        const auto *change = reinterpret_cast<const xcb_property_notify_event_t *>(event);
        if (m_property == XCB_NONE || change->window != m_window || change->atom != m_property)
            return false;
        break;
    }
    default:
        return false;
    }
    m_changed();
    return false; // the toolkit follows some of them, too
}

} // namespace swabby
