#pragma once

#include <QtCore/QString>
#include <QtGui/QFont>

namespace swabby {

/// How much narrower, in pixels, a text of that width has to be set so that no word stands alone on its last
/// line; 0 when none does, or when it would take one line more.
double roomForLastLine(const QString &text, const QFont &font, double width);

} // namespace swabby
