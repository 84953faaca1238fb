#pragma once

#include <cstdint>
#include <string>
#include <string_view>

namespace swabby {

/// The helper that draws icons.
inline constexpr const char *iconDrawingProgram = "swabby-icons";

/// What a request begins with; the content of the file follows.
struct IconDrawingRequest {
    std::int32_t pixels = 0; ///< the edge of the square that a drawing fills
};

inline std::string iconDrawingRequest(int pixels, std::string_view file)
{
    const IconDrawingRequest head = {pixels};
    return std::string(reinterpret_cast<const char *>(&head), sizeof head).append(file);
}

/// What an answer begins with; the pixels follow, premultiplied ARGB of four bytes each, row by row. Of no
/// size when the file is no sound picture, or one of nothing.
struct IconDrawingAnswer {
    std::int32_t width = 0;
    std::int32_t height = 0;
};

/// No picture's edge has more pixels: a few kilobytes of file can unfold to gigabytes.
inline constexpr int largestPictureEdge = 1024;

/// The answer of a request: a PNG picture in its own size, a drawing (SVG) in the one that is asked for.
/// Nothing that the file refers to is loaded.
std::string drawIcon(std::string_view request);

} // namespace swabby
