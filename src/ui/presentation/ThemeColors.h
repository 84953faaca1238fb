#pragma once

#include "ui/presentation/Tint.h"

#include <QtCore/QList>
#include <QtGui/QColor>

namespace swabby {

/// Every colour of the product, for one of its two themes.
struct ThemeColors {
    QColor window;
    QColor sidebar;
    QColor card;
    QColor hairline;
    QColor quietFill;  ///< of buttons, bars and fields
    QColor hoverFill;  ///< the same under the pointer
    QColor primary;    ///< text
    QColor secondary;  ///< text
    QColor tertiary;   ///< placeholders and axis labels only
    QColor accent;     ///< symbols, bars, the focus ring
    QColor accentFill; ///< behind white text: deep enough to read it
    QColor dangerFill; ///< behind white text, of what destroys
    QColor onAccent;
    QColor cardEdge; ///< the hairline on paper, as one colour
    QColor shadow;   ///< of a card, just to be seen and laid thrice; none in the dark
    QColor scrim;    ///< over the window behind a sheet
    QColor trustStar;
    QList<QColor> marks;  ///< bars and symbols, by tint
    QList<QColor> inks;   ///< text, by tint
    QList<QColor> washes; ///< backgrounds behind that text, by tint
};

const ThemeColors &lightColors();
const ThemeColors &darkColors();

/// The same colours around the accent that the desktop has chosen, deepened or lightened as far as words on
/// it and in it need to be read.
ThemeColors withAccent(const ThemeColors &colors, const QColor &accent);

/// Backgrounds of programs' letter tiles, the same in both themes, each dark enough for a white letter.
const QList<QColor> &tileColors();

/// A translucent colour on another one, as one colour.
QColor laidOver(const QColor &upper, const QColor &lower);

/// How well two colours can be told apart, 1 to 21; the upper one may be translucent.
double contrastRatio(const QColor &upper, const QColor &lower);

} // namespace swabby
