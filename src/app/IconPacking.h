#pragma once

#include <QtCore/QByteArray>

#include <map>

namespace swabby {

/// The edges, in pixels, of the pictures that an application's icon has.
inline constexpr int iconSides[] = {16, 32, 64, 128, 256, 512, 1024};

/// An icon file (.icns) of PNG pictures by their edge; one of another edge than those above is left out.
QByteArray packIcon(const std::map<int, QByteArray> &pictures);

} // namespace swabby
