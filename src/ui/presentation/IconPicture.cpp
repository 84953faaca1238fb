#include "ui/presentation/IconPicture.h"

#include "platform/posix/LateLibrary.h"
#include "ui/presentation/SvgCheck.h"
#include "ui/svg/SvgDrawing.h"

#include <QtCore/QBuffer>
#include <QtGui/QImageReader>

namespace swabby {
namespace {

/// A few kilobytes of file can unfold to gigabytes of picture.
constexpr int largestEdge = 1024;

QImage pngPicture(const QByteArray &file, int pixels)
{
    QBuffer buffer;
    buffer.setData(file);
    buffer.open(QIODevice::ReadOnly);
    // Named, so that no other format's reader gets to see the file.
    QImageReader reader(&buffer, "png");
    reader.setAutoDetectImageFormat(false);
    const QSize size = reader.size();
    if (size.isEmpty() || size.width() > largestEdge || size.height() > largestEdge)
        return {};
    const QImage picture = reader.read();
    if (picture.isNull())
        return {};
    return picture.convertToFormat(QImage::Format_ARGB32_Premultiplied)
        .scaled(pixels, pixels, Qt::KeepAspectRatio, Qt::SmoothTransformation);
}

QImage svgPicture(const QByteArray &file, int pixels)
{
    static SvgDrawingEntry *const draw =
        lateFunction<SvgDrawingEntry>(svgDrawingLibrary, svgDrawingEntryName);
    QImage picture(pixels, pixels, QImage::Format_ARGB32_Premultiplied);
    picture.fill(Qt::transparent);
    const bool isDrawn =
        draw != nullptr && !picture.isNull() &&
        draw(file.constData(), static_cast<std::size_t>(file.size()), pixels, picture.bits());
    return isDrawn ? picture : QImage();
}

} // namespace

QImage iconPicture(const QByteArray &file, int pixels)
{
    if (pixels <= 0)
        return {};
    if (file.startsWith("\x89PNG"))
        return pngPicture(file, pixels);
    return mayBeDrawn(file) ? svgPicture(file, pixels) : QImage();
}

} // namespace swabby
