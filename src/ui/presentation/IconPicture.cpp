#include "ui/presentation/IconPicture.h"

#include "ui/presentation/SvgCheck.h"
#include "ui/svg/SvgDrawing.h"

#include <QtCore/QBuffer>
#include <QtCore/QCoreApplication>
#include <QtCore/QLibrary>
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

// Beside the program in a build, in a folder of its own when installed.
SvgDrawingEntry findSvgDrawing()
{
    const QString here = QCoreApplication::applicationDirPath();
    for (const QString &folder : {here, here + QStringLiteral("/../lib/swabby")})
        if (const auto entry =
                QLibrary(folder + QStringLiteral("/libswabby-svg")).resolve(svgDrawingEntryName))
            return reinterpret_cast<SvgDrawingEntry>(entry);
    return nullptr;
}

QImage svgPicture(const QByteArray &file, int pixels)
{
    static const SvgDrawingEntry draw = findSvgDrawing();
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
