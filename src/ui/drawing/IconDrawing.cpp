#include "ui/drawing/IconDrawing.h"

#include <cairo.h>
#include <librsvg/rsvg.h>

#include <algorithm>
#include <cstring>
#include <memory>

namespace swabby {
namespace {

struct Release {
    void operator()(RsvgHandle *drawing) const { g_object_unref(drawing); }
    void operator()(cairo_surface_t *surface) const { cairo_surface_destroy(surface); }
    void operator()(cairo_t *painter) const { cairo_destroy(painter); }
};
using Surface = std::unique_ptr<cairo_surface_t, Release>;
using Painter = std::unique_ptr<cairo_t, Release>;

constexpr std::string_view pngMark = "\x89PNG\r\n\x1a\n";

/// A transparent one of the size that the answer's begin says, drawn into the answer itself.
Surface surfaceIn(std::string &answer, IconDrawingAnswer size)
{
    answer.assign(
        sizeof size + 4 * static_cast<std::size_t>(size.width) * static_cast<std::size_t>(size.height), '\0');
    std::memcpy(answer.data(), &size, sizeof size);
    auto *pixels = reinterpret_cast<unsigned char *>(answer.data() + sizeof size);
    return Surface(cairo_image_surface_create_for_data(pixels, CAIRO_FORMAT_ARGB32, size.width, size.height,
                                                       4 * size.width));
}

cairo_status_t readOn(void *rest, unsigned char *place, unsigned count)
{
    auto *bytes = static_cast<std::string_view *>(rest);
    if (bytes->size() < count)
        return CAIRO_STATUS_READ_ERROR;
    std::memcpy(place, bytes->data(), count);
    bytes->remove_prefix(count);
    return CAIRO_STATUS_SUCCESS;
}

bool drawPng(std::string_view file, std::string &answer)
{
    const Surface picture(cairo_image_surface_create_from_png_stream(readOn, &file));
    const IconDrawingAnswer size = {cairo_image_surface_get_width(picture.get()),
                                    cairo_image_surface_get_height(picture.get())};
    if (cairo_surface_status(picture.get()) != CAIRO_STATUS_SUCCESS ||
        std::max(size.width, size.height) > largestPictureEdge)
        return false;
    const Surface surface = surfaceIn(answer, size);
    const Painter painter(cairo_create(surface.get()));
    cairo_set_operator(painter.get(), CAIRO_OPERATOR_SOURCE);
    cairo_set_source_surface(painter.get(), picture.get(), 0, 0);
    cairo_paint(painter.get());
    return cairo_status(painter.get()) == CAIRO_STATUS_SUCCESS;
}

bool drawSvg(std::string_view file, int pixels, std::string &answer)
{
    // Bytes without an address of their own: nothing beside them can be reached.
    const auto *bytes = reinterpret_cast<const guint8 *>(file.data());
    const std::unique_ptr<RsvgHandle, Release> drawing(
        rsvg_handle_new_from_data(bytes, file.size(), nullptr));
    if (!drawing)
        return false;
    const Surface surface = surfaceIn(answer, {pixels, pixels});
    const Painter painter(cairo_create(surface.get()));
    const RsvgRectangle place = {0, 0, static_cast<double>(pixels), static_cast<double>(pixels)};
    return rsvg_handle_render_document(drawing.get(), painter.get(), &place, nullptr) != 0;
}

} // namespace

std::string drawIcon(std::string_view request)
{
    IconDrawingRequest head;
    std::string answer;
    bool isDrawn = false;
    if (request.size() > sizeof head) {
        std::memcpy(&head, request.data(), sizeof head);
        const std::string_view file = request.substr(sizeof head);
        if (head.pixels > 0 && head.pixels <= largestPictureEdge)
            isDrawn = file.starts_with(pngMark) ? drawPng(file, answer) : drawSvg(file, head.pixels, answer);
    }
    // Something that cannot be seen stands for no program.
    isDrawn = isDrawn && answer.find_first_not_of('\0', sizeof(IconDrawingAnswer)) != std::string::npos;
    return isDrawn ? answer : std::string(sizeof(IconDrawingAnswer), '\0');
}

} // namespace swabby
