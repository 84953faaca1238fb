#pragma once

#include "state/MenuBarTitle.h"

#include <QtGui/QColor>
#include <QtGui/QIcon>
#include <QtGui/QImage>

namespace swabby {

/// The colour of a title, bright enough for a dark menu bar.
QColor titleColor(TitleColor color);

/// The two-line image of a menu bar as wide as the item: "Swabby" over the load. It keeps its colours in
/// light and dark menu bars.
QImage renderTitleImage(const MenuBarTitle &title, double devicePixelRatio);

/// The load alone in a small square, on a dark plate so that it can be read on any panel.
QImage renderTraySquare(const MenuBarTitle &title, int size);

/// Swabby's own mark, in a square of so many pixels.
QImage applicationPicture(int side);

/// The same for windows.
QIcon applicationIcon();

} // namespace swabby
