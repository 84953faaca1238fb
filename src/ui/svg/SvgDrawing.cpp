#include "ui/svg/SvgDrawing.h"

#include <cairo.h>
#include <librsvg/rsvg.h>

#include <memory>

namespace {

struct Release {
    void operator()(RsvgHandle *drawing) const { g_object_unref(drawing); }
    void operator()(cairo_surface_t *surface) const { cairo_surface_destroy(surface); }
    void operator()(cairo_t *painter) const { cairo_destroy(painter); }
};

} // namespace

extern "C" __attribute__((visibility("default"))) bool swabbyDrawSvg(const char *file, std::size_t size,
                                                                     int pixels, unsigned char *picture)
{
    // Bytes without an address of their own: nothing beside them can be reached.
    const auto *bytes = reinterpret_cast<const guint8 *>(file);
    const std::unique_ptr<RsvgHandle, Release> drawing(rsvg_handle_new_from_data(bytes, size, nullptr));
    if (!drawing)
        return false;
    const std::unique_ptr<cairo_surface_t, Release> surface(
        cairo_image_surface_create_for_data(picture, CAIRO_FORMAT_ARGB32, pixels, pixels, 4 * pixels));
    const std::unique_ptr<cairo_t, Release> painter(cairo_create(surface.get()));
    const RsvgRectangle place = {0, 0, static_cast<double>(pixels), static_cast<double>(pixels)};
    const bool isDrawn = rsvg_handle_render_document(drawing.get(), painter.get(), &place, nullptr);
    cairo_surface_flush(surface.get());
    return isDrawn;
}
