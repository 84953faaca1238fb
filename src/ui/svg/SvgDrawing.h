#pragma once

#include <cstddef>

namespace swabby {

/// The one entry of the library that draws SVG files, which is loaded when the first one is to be shown: it
/// draws the file into a square of that many pixels an edge, premultiplied ARGB of four bytes each, which the
/// caller has made transparent. Nothing that the file refers to is loaded. False when it is no sound drawing.
using SvgDrawingEntry = bool(const char *file, std::size_t size, int pixels, unsigned char *picture);
inline constexpr const char *svgDrawingLibrary = "libswabby-svg.so";
inline constexpr const char *svgDrawingEntryName = "swabbyDrawSvg";

} // namespace swabby
