#include "platform/linux/desktop/EmbeddedTrayItem.h"

#include <QtGui/QGuiApplication>
#include <QtGui/QScreen>

namespace swabby {
namespace {

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
    : m_manager("_NET_SYSTEM_TRAY", {}, [this] { changeManager(); }), m_connection(m_manager.connection())
{
    if (m_connection == nullptr)
        return;
    m_atoms = {atomOf(m_connection, "_NET_SYSTEM_TRAY_OPCODE"),
               atomOf(m_connection, "_NET_SYSTEM_TRAY_VISUAL")};
    qGuiApp->installNativeEventFilter(this);
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
    else if (m_manager.window() != XCB_NONE)
        dock();
}

void EmbeddedTrayItem::hide()
{
    m_picture = {};
    m_window.reset();
}

void EmbeddedTrayItem::changeManager()
{
    m_window.reset();
    if (m_manager.window() != XCB_NONE && m_picture.draw)
        dock();
    Q_EMIT placeChanged();
}

xcb_visualid_t EmbeddedTrayItem::wantedVisual() const
{
    const auto property = answer(xcb_get_property_reply(
        m_connection,
        xcb_get_property(m_connection, 0, m_manager.window(), m_atoms.visual, XCB_ATOM_VISUALID, 0, 1),
        nullptr));
    if (!property || property->format != 32 || xcb_get_property_value_length(property.get()) < 4)
        return XCB_NONE;
    return *static_cast<const xcb_visualid_t *>(xcb_get_property_value(property.get()));
}

void EmbeddedTrayItem::dock()
{
    m_window = std::make_unique<TrayWindow>(m_connection, *m_manager.screen(), wantedVisual());
    constexpr std::uint32_t takeIn = 0;
    xcb_client_message_event_t request = {};
    request.response_type = XCB_CLIENT_MESSAGE;
    request.format = 32;
    request.window = m_manager.window();
    request.type = m_atoms.request;
    request.data.data32[0] = XCB_CURRENT_TIME;
    request.data.data32[1] = takeIn;
    request.data.data32[2] = m_window->id();
    letFail(m_connection, xcb_send_event_checked(m_connection, 0, m_manager.window(), XCB_EVENT_MASK_NO_EVENT,
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
        return isOurs(reinterpret_cast<const xcb_client_message_event_t *>(event)->window);
    }
    case XCB_DESTROY_NOTIFY: {
        const auto *end = reinterpret_cast<const xcb_destroy_notify_event_t *>(event);
        const bool isOur = isOurs(end->window);
        if (isOur) {
            m_window->forget();
            m_window.reset();
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
