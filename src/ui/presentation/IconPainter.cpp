#include "ui/presentation/IconPainter.h"

#include <cstring>

namespace swabby {
namespace {

/// Looks at the bytes of the answer until it is gone. No value when they are no picture's.
std::optional<QImage> pictureIn(const std::string &answer)
{
    IconDrawingAnswer size;
    if (answer.size() < sizeof size)
        return std::nullopt;
    std::memcpy(&size, answer.data(), sizeof size);
    if (size.width == 0 && size.height == 0)
        return QImage();
    const auto isEdge = [](int edge) { return edge > 0 && edge <= largestPictureEdge; };
    if (!isEdge(size.width) || !isEdge(size.height) ||
        answer.size() != sizeof size + 4 * static_cast<std::size_t>(size.width * size.height))
        return std::nullopt;
    const auto *pixels = reinterpret_cast<const uchar *>(answer.data() + sizeof size);
    return QImage(pixels, size.width, size.height, 4 * size.width, QImage::Format_ARGB32_Premultiplied);
}

} // namespace

std::optional<QImage> IconPainter::draw(const QByteArray &file, int pixels,
                                        std::chrono::milliseconds processorTime)
{
    if (pixels <= 0 || file.isEmpty())
        return QImage();
    const std::string_view content(file.constData(), static_cast<std::size_t>(file.size()));
    const auto answer = m_helper.ask(iconDrawingRequest(pixels, content), processorTime);
    const auto picture = answer ? pictureIn(*answer) : std::nullopt;
    if (!picture || picture->isNull())
        return picture;
    // Copied, or made anew: the answer goes.
    return picture->copy().scaled(pixels, pixels, Qt::KeepAspectRatio, Qt::SmoothTransformation);
}

} // namespace swabby
