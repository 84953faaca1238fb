#include "platform/linux/desktop/EmbeddedTrayItem.h"

#include <QtGui/QGuiApplication>
#include <QtGui/QScreen>

#include <cstdlib>
#include <string>

namespace swabby {
namespace {

template <typename Reply>
using Answer = std::unique_ptr<Reply, decltype(&std::free)>;

template <typename Reply>
Answer<Reply> answer(Reply *reply)
{
    return Answer<Reply>(reply, &std::free);
}

const xcb_screen_t *screenOf(xcb_connection_t *connection, int number)
{
    auto screen = xcb_setup_roots_iterator(xcb_get_setup(connection));
    while (number-- > 0 && screen.rem > 1)
        xcb_screen_next(&screen);
    return screen.data;
}

// The server counts pixels, the toolkit's screens may count larger ones.
QRect onScreen(const QRect &pixels)
{
    for (const QScreen *screen : QGuiApplication::screens()) {
        const QPoint origin = screen->geometry().topLeft();
        const double ratio = screen->devicePixelRatio();
        if (QRect(origin, screen->geometry().size() * ratio).contains(pixels.center()))
            return {origin + (pixels.topLeft() - origin) / ratio, pixels.size() / ratio};
    }
    return pixels;
}

} // namespace

EmbeddedTrayItem::EmbeddedTrayItem()
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
    m_atoms = {atomOf(m_connection, "_NET_SYSTEM_TRAY_S" + std::to_string(number)),
               atomOf(m_connection, "MANAGER"), atomOf(m_connection, "_NET_SYSTEM_TRAY_OPCODE"),
               atomOf(m_connection, "_NET_SYSTEM_TRAY_VISUAL")};
    qGuiApp->installNativeEventFilter(this);
    listenToRoot();
    lookForManager();
}

EmbeddedTrayItem::~EmbeddedTrayItem()
{
    if (m_connection != nullptr)
        qGuiApp->removeNativeEventFilter(this);
}

void EmbeddedTrayItem::show(const TrayPicture &picture)
{
    m_picture = picture;
    if (m_window != nullptr)
        m_window->paint(m_picture);
    else if (m_manager != XCB_NONE)
        dock();
}

void EmbeddedTrayItem::hide()
{
    m_picture = {};
    m_window.reset();
}

// A new manager says so on the root window. The toolkit listens there too, with the same connection.
void EmbeddedTrayItem::listenToRoot() const
{
    const auto attributes = answer(xcb_get_window_attributes_reply(
        m_connection, xcb_get_window_attributes(m_connection, m_screen->root), nullptr));
    if (!attributes)
        return;
    const std::uint32_t events = attributes->your_event_mask | XCB_EVENT_MASK_STRUCTURE_NOTIFY;
    xcb_change_window_attributes(m_connection, m_screen->root, XCB_CW_EVENT_MASK, &events);
}

void EmbeddedTrayItem::lookForManager()
{
    // Nobody may go between being found and being listened to.
    xcb_grab_server(m_connection);
    const auto owner = answer(xcb_get_selection_owner_reply(
        m_connection, xcb_get_selection_owner(m_connection, m_atoms.selection), nullptr));
    m_manager = owner ? owner->owner : xcb_window_t{XCB_NONE};
    if (m_manager != XCB_NONE) {
        const std::uint32_t events = XCB_EVENT_MASK_STRUCTURE_NOTIFY;
        letFail(m_connection,
                xcb_change_window_attributes_checked(m_connection, m_manager, XCB_CW_EVENT_MASK, &events));
    }
    xcb_ungrab_server(m_connection);
    xcb_flush(m_connection);
}

void EmbeddedTrayItem::changeManager()
{
    m_manager = XCB_NONE;
    m_window.reset();
    lookForManager();
    if (m_manager != XCB_NONE && m_picture.draw)
        dock();
    Q_EMIT placeChanged();
}

xcb_visualid_t EmbeddedTrayItem::wantedVisual() const
{
    const auto property = answer(xcb_get_property_reply(
        m_connection, xcb_get_property(m_connection, 0, m_manager, m_atoms.visual, XCB_ATOM_VISUALID, 0, 1),
        nullptr));
    if (!property || property->format != 32 || xcb_get_property_value_length(property.get()) < 4)
        return XCB_NONE;
    return *static_cast<const xcb_visualid_t *>(xcb_get_property_value(property.get()));
}

void EmbeddedTrayItem::dock()
{
    m_window = std::make_unique<TrayWindow>(m_connection, *m_screen, wantedVisual());
    constexpr std::uint32_t takeIn = 0;
    xcb_client_message_event_t request = {};
    request.response_type = XCB_CLIENT_MESSAGE;
    request.format = 32;
    request.window = m_manager;
    request.type = m_atoms.request;
    request.data.data32[0] = XCB_CURRENT_TIME;
    request.data.data32[1] = takeIn;
    request.data.data32[2] = m_window->id();
    letFail(m_connection, xcb_send_event_checked(m_connection, 0, m_manager, XCB_EVENT_MASK_NO_EVENT,
                                                 reinterpret_cast<const char *>(&request)));
    xcb_flush(m_connection);
}

bool EmbeddedTrayItem::nativeEventFilter(const QByteArray &eventType, void *message, qintptr * /*result*/)
{
    return eventType == "xcb_generic_event_t" && follow(static_cast<const xcb_generic_event_t *>(message));
}

// True for what no one else need look at.
bool EmbeddedTrayItem::follow(const xcb_generic_event_t *event)
{
    constexpr int sentByOthers = 0x80;
    const auto isOurs = [this](xcb_window_t window) {
        return m_window != nullptr && window == m_window->id();
    };
    switch (event->response_type & ~sentByOthers) {
    case XCB_CLIENT_MESSAGE: {
        const auto *word = reinterpret_cast<const xcb_client_message_event_t *>(event);
        if (word->type == m_atoms.manager && word->data.data32[1] == m_atoms.selection)
            changeManager();
        return isOurs(word->window);
    }
    case XCB_DESTROY_NOTIFY: {
        const auto *end = reinterpret_cast<const xcb_destroy_notify_event_t *>(event);
        const bool isOur = isOurs(end->window);
        if (isOur) {
            m_window->forget();
            m_window.reset();
        } else if (m_manager != XCB_NONE && end->window == m_manager) {
            changeManager();
        }
        return isOur;
    }
    case XCB_CONFIGURE_NOTIFY: {
        const auto *change = reinterpret_cast<const xcb_configure_notify_event_t *>(event);
        if (!isOurs(change->window))
            return false;
        const QSize size(change->width, change->height);
        if (size != m_window->size()) {
            m_window->setSize(size);
            m_window->paint(m_picture);
        }
        return true;
    }
    case XCB_EXPOSE: {
        const auto *bare = reinterpret_cast<const xcb_expose_event_t *>(event);
        if (!isOurs(bare->window))
            return false;
        if (bare->count == 0)
            m_window->paint(m_picture);
        return true;
    }
    case XCB_BUTTON_PRESS: {
        const auto *click = reinterpret_cast<const xcb_button_press_event_t *>(event);
        if (!isOurs(click->event))
            return false;
        press(*click);
        return true;
    }
    default:
        return false;
    }
}

void EmbeddedTrayItem::press(const xcb_button_press_event_t &press)
{
    const QPoint corner(press.root_x - press.event_x, press.root_y - press.event_y);
    const QRect where = onScreen(QRect(corner, m_window->size()));
    if (press.detail == XCB_BUTTON_INDEX_1 || press.detail == XCB_BUTTON_INDEX_2)
        Q_EMIT activated(where);
    else if (press.detail == XCB_BUTTON_INDEX_3)
        Q_EMIT menuWanted(where);
}

} // namespace swabby
