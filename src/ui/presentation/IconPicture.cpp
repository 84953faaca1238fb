#include "ui/presentation/IconPicture.h"

#include <QtCore/QBuffer>
#include <QtGui/QImageReader>

namespace swabby {
namespace {

/// A few kilobytes of file can unfold to gigabytes of picture.
constexpr int largestEdge = 1024;

QImage pngPicture(const QByteArray &file)
{
    QBuffer buffer;
    buffer.setData(file);
    buffer.open(QIODevice::ReadOnly);
    // Named, so that no other format's reader gets to see the file.
    QImageReader reader(&buffer, "png");
    reader.setAutoDetectImageFormat(false);
    const QSize size = reader.size();
    if (!size.isValid() || size.width() > largestEdge || size.height() > largestEdge)
        return {};
    return reader.read();
}

} // namespace

QImage iconPicture(const QByteArray &file, int pixels)
{
    if (!file.startsWith("\x89PNG"))
        return {};
    const QImage picture = pngPicture(file);
    if (picture.isNull())
        return {};
    return picture.convertToFormat(QImage::Format_ARGB32_Premultiplied)
        .scaled(pixels, pixels, Qt::KeepAspectRatio, Qt::SmoothTransformation);
}

} // namespace swabby
