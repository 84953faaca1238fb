#pragma once

#include <QtCore/QStringList>

namespace swabby {

/// The drawing behind a symbol's name, as SVG path data in a box of 24 × 24 units.
struct SymbolDrawing {
    const char *name;
    const char *stroke;    ///< drawn with a round pen
    const char *fill = ""; ///< filled
    const char *cut = "";  ///< stroked out of what was drawn before
};

/// Null for a name without a drawing.
const SymbolDrawing *findSymbol(const QString &name);
QStringList symbolNames();

} // namespace swabby
