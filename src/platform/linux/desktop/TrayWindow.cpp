#include "platform/linux/desktop/TrayWindow.h"

#include "platform/linux/desktop/SelectionOwner.h"

#include <QtGui/QPainter>

#include <cstdlib>

namespace swabby {
namespace {

constexpr int firstSide = 22; // until the panel says otherwise
constexpr std::uint8_t transparentDepth = 32;

std::uint8_t depthOf(const xcb_screen_t &screen, xcb_visualid_t visual)
{
    for (auto depth = xcb_screen_allowed_depths_iterator(&screen); depth.rem > 0; xcb_depth_next(&depth))
        for (auto kind = xcb_depth_visuals_iterator(depth.data); kind.rem > 0; xcb_visualtype_next(&kind))
            if (kind.data->visual_id == visual)
                return depth.data->depth;
    return 0;
}

void setText(xcb_connection_t *connection, xcb_window_t window, xcb_atom_t property, std::string_view text)
{
    xcb_change_property(connection, XCB_PROP_MODE_REPLACE, window, property, XCB_ATOM_STRING, 8,
                        static_cast<std::uint32_t>(text.size()), text.data());
}

} // namespace

void letFail(xcb_connection_t *connection, xcb_void_cookie_t checkedRequest)
{
    xcb_discard_reply(connection, checkedRequest.sequence);
}

TrayWindow::TrayWindow(xcb_connection_t *connection, const xcb_screen_t &screen, xcb_visualid_t visual)
    : m_connection(connection),
      m_depth(depthOf(screen, visual)),
      m_window(xcb_generate_id(connection)),
      m_size(firstSide, firstSide)
{
    constexpr std::uint32_t events =
        XCB_EVENT_MASK_EXPOSURE | XCB_EVENT_MASK_STRUCTURE_NOTIFY | XCB_EVENT_MASK_BUTTON_PRESS;
    const bool isTransparent = m_depth == transparentDepth;
    if (!isTransparent) {
        m_depth = screen.root_depth;
        visual = screen.root_visual;
    }
    std::uint32_t mask = XCB_CW_BACK_PIXMAP | XCB_CW_BORDER_PIXEL | XCB_CW_EVENT_MASK;
    std::vector<std::uint32_t> values = {XCB_BACK_PIXMAP_PARENT_RELATIVE, 0, events};
    if (isTransparent) {
        m_colormap = xcb_generate_id(m_connection);
        xcb_create_colormap(m_connection, XCB_COLORMAP_ALLOC_NONE, m_colormap, screen.root, visual);
        mask = XCB_CW_BACK_PIXEL | XCB_CW_BORDER_PIXEL | XCB_CW_EVENT_MASK | XCB_CW_COLORMAP;
        values = {0, 0, events, m_colormap};
    }
    xcb_create_window(m_connection, m_depth, m_window, screen.root, 0, 0, firstSide, firstSide, 0,
                      XCB_WINDOW_CLASS_INPUT_OUTPUT, visual, mask, values.data());
    describe();
}

TrayWindow::~TrayWindow()
{
    if (m_window != XCB_NONE)
        letFail(m_connection, xcb_destroy_window_checked(m_connection, m_window));
    if (m_colormap != XCB_NONE)
        xcb_free_colormap(m_connection, m_colormap);
    xcb_flush(m_connection);
}

void TrayWindow::describe() const
{
    using namespace std::string_view_literals;
    setText(m_connection, m_window, XCB_ATOM_WM_NAME, "Swabby");
    setText(m_connection, m_window, XCB_ATOM_WM_CLASS, "swabby\0Swabby\0"sv);
    // Its least size: flags, four fields of old, width and height, and what it has nothing to say about.
    constexpr std::uint32_t hasLeastSize = 1U << 4;
    constexpr std::uint32_t sizeHints[18] = {hasLeastSize, 0, 0, 0, 0, firstSide, firstSide};
    xcb_change_property(m_connection, XCB_PROP_MODE_REPLACE, m_window, XCB_ATOM_WM_NORMAL_HINTS,
                        XCB_ATOM_WM_SIZE_HINTS, 32, 18, sizeHints);
    // The version of the protocol, and that it wants to be seen.
    constexpr std::uint32_t embedding[2] = {0, 1};
    const xcb_atom_t atom = atomOf(m_connection, "_XEMBED_INFO");
    xcb_change_property(m_connection, XCB_PROP_MODE_REPLACE, m_window, atom, atom, 32, 2, embedding);
}

void TrayWindow::paint(const TrayPicture &picture) const
{
    constexpr int bytesPerPixel = 4;
    if (m_window == XCB_NONE || !picture.draw || (m_depth != transparentDepth && m_depth != 24))
        return;
    QImage image = background();
    const int side = std::min(image.width(), image.height());
    QPainter painter(&image);
    painter.drawImage((image.width() - side) / 2, (image.height() - side) / 2, picture.draw(side));
    painter.end();
    const xcb_gcontext_t context = xcb_generate_id(m_connection);
    letFail(m_connection, xcb_create_gc_checked(m_connection, context, m_window, 0, nullptr));
    letFail(m_connection,
            xcb_put_image_checked(m_connection, XCB_IMAGE_FORMAT_Z_PIXMAP, m_window, context,
                                  static_cast<std::uint16_t>(image.width()),
                                  static_cast<std::uint16_t>(image.height()), 0, 0, 0, m_depth,
                                  static_cast<std::uint32_t>(image.width() * image.height() * bytesPerPixel),
                                  image.constBits()));
    letFail(m_connection, xcb_free_gc_checked(m_connection, context));
    xcb_flush(m_connection);
}

// What stands there without the picture. The server gives none for a window that reaches out of the screen.
QImage TrayWindow::background() const
{
    if (m_depth == transparentDepth) {
        QImage nothing(m_size, QImage::Format_ARGB32_Premultiplied);
        nothing.fill(Qt::transparent);
        return nothing;
    }
    const auto width = static_cast<std::uint16_t>(m_size.width());
    const auto height = static_cast<std::uint16_t>(m_size.height());
    letFail(m_connection, xcb_clear_area_checked(m_connection, 0, m_window, 0, 0, 0, 0));
    const auto cookie =
        xcb_get_image(m_connection, XCB_IMAGE_FORMAT_Z_PIXMAP, m_window, 0, 0, width, height, ~0U);
    xcb_generic_error_t *error = nullptr;
    const std::unique_ptr<xcb_get_image_reply_t, decltype(&std::free)> reply(
        xcb_get_image_reply(m_connection, cookie, &error), &std::free);
    std::free(error);
    const auto wanted = static_cast<int>(width) * height * 4;
    if (reply && xcb_get_image_data_length(reply.get()) >= wanted)
        return QImage(xcb_get_image_data(reply.get()), width, height, QImage::Format_RGB32).copy();
    QImage plain(m_size, QImage::Format_RGB32);
    plain.fill(Qt::black);
    return plain;
}

} // namespace swabby
