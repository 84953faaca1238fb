#pragma once

#include <QtCore/QString>
#include <QtGui/QPainterPath>

namespace swabby {

/// The digits and the percent sign as strokes, side by side, 20 units high. Opening a font for them would
/// cost more memory than all else that Swabby does while it only watches.
QPainterPath trayDigits(const QString &text);

/// The pen's width for them, in their units.
inline constexpr double trayDigitPen = 3.2;

} // namespace swabby
