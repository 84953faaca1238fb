#pragma once

#include <QtCore/QByteArray>

namespace swabby {

/// Of the PNG pictures in an icon file (.icns) the smallest one whose edge has that many pixels, else the
/// largest. Empty when the bytes are no icon file or hold no PNG, as very old ones do.
QByteArray pngOfIconFile(const QByteArray &file, int pixels);

} // namespace swabby
