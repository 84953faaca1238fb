#include "platform/mactools/IconFile.h"

#include <QtCore/QtEndian>

#include <algorithm>
#include <string_view>

namespace swabby {
namespace {

using namespace std::string_view_literals;

// "icns" and the length of the whole; then entries, each a type of four letters, its length and its content.
constexpr auto fileMark = "icns"sv;
constexpr std::size_t headSize = 8;
// A PNG begins with its mark and the header chunk: length, "IHDR", width, height.
constexpr auto pngMark = "\x89PNG\r\n\x1a\n\0\0\0\x0dIHDR"sv;

std::uint32_t numberAt(std::string_view bytes, std::size_t place)
{
    return qFromBigEndian<std::uint32_t>(bytes.data() + place);
}

/// 0 for what is no PNG.
std::uint32_t pngWidth(std::string_view picture)
{
    const bool isPng = picture.starts_with(pngMark) && picture.size() >= pngMark.size() + headSize;
    return isPng ? numberAt(picture, pngMark.size()) : 0;
}

} // namespace

QByteArray pngOfIconFile(const QByteArray &file, int pixels)
{
    std::string_view rest(file.constData(), static_cast<std::size_t>(file.size()));
    if (!rest.starts_with(fileMark) || rest.size() < headSize)
        return {};
    rest = rest.substr(0, std::max<std::size_t>(headSize, numberAt(rest, fileMark.size())));
    rest.remove_prefix(headSize);

    const auto wanted = static_cast<std::uint32_t>(std::max(pixels, 1));
    std::string_view best;
    std::uint32_t bestWidth = 0;
    while (rest.size() > headSize) {
        const std::size_t size = numberAt(rest, fileMark.size());
        if (size < headSize || size > rest.size())
            break;
        const std::string_view picture = rest.substr(headSize, size - headSize);
        const std::uint32_t width = pngWidth(picture);
        rest.remove_prefix(size);
        if (width > 0 && (bestWidth < wanted ? width > bestWidth : width >= wanted && width < bestWidth)) {
            best = picture;
            bestWidth = width;
        }
    }
    return {best.data(), static_cast<qsizetype>(best.size())};
}

} // namespace swabby
