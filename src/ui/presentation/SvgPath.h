#pragma once

#include <QtCore/QString>
#include <QtGui/QPainterPath>

namespace swabby {

/// Path data as SVG writes it: the commands M L H V C Q A Z, absolute or relative. Drawing ends where the
/// data is not understood.
QPainterPath svgPath(const QString &data);

} // namespace swabby
