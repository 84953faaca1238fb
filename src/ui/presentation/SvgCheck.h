#pragma once

#include <QtCore/QByteArray>

namespace swabby {

/// Whether an SVG file that anybody may have made can be given to the library that draws it. Some filters
/// keep that busy for minutes or end the whole program, and no icon needs them.
bool mayBeDrawn(const QByteArray &file);

} // namespace swabby
