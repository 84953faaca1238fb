#pragma once

#include <QtCore/QByteArray>
#include <QtGui/QImage>

namespace swabby {

/// Draws the content of a PNG or SVG file that anybody may have made, so that its longer edge has that many
/// pixels. Null when it is no sound picture or larger than any icon. Takes its time: background work only.
QImage iconPicture(const QByteArray &file, int pixels);

} // namespace swabby
