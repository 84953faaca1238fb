#include "ui/presentation/ThemeColors.h"

#include <algorithm>
#include <cmath>

namespace swabby {
namespace {

QColor black(double alpha)
{
    return QColor::fromRgbF(0, 0, 0, static_cast<float>(alpha));
}

QColor white(double alpha)
{
    return QColor::fromRgbF(1, 1, 1, static_cast<float>(alpha));
}

QColor washOf(QRgb mark)
{
    QColor wash(mark);
    wash.setAlphaF(0.17F);
    return wash;
}

double luminance(const QColor &color)
{
    const auto linear = [](double channel) {
        return channel <= 0.04045 ? channel / 12.92 : std::pow((channel + 0.055) / 1.055, 2.4);
    };
    return 0.2126 * linear(color.redF()) + 0.7152 * linear(color.greenF()) + 0.0722 * linear(color.blueF());
}

// The color, moved towards black or white until it can be told apart from all of these grounds that well.
QColor toldApart(QColor color, const QList<QColor> &grounds, double least)
{
    const bool isOnDark = luminance(grounds.first()) < 0.2;
    const QColor step = isOnDark ? white(0.04) : black(0.04);
    const auto isTold = [&](const QColor &ground) { return contrastRatio(color, ground) >= least; };
    for (int steps = 0; steps < 100 && !std::all_of(grounds.begin(), grounds.end(), isTold); ++steps)
        color = laidOver(step, color);
    return color;
}

} // namespace

const ThemeColors &lightColors()
{
    static const ThemeColors colors = {
        .window = 0xf5f5f7,
        .sidebar = 0xe9e9ee,
        .card = 0xffffff,
        .hairline = black(0.08),
        .quietFill = black(0.05),
        .hoverFill = black(0.09),
        .primary = 0x1d1d1f,
        .secondary = 0x6e6e73,
        .tertiary = 0x98989d,
        .accent = 0x0a7aff,
        .accentFill = 0x0a6be6,
        .dangerFill = 0xd92d22,
        .onAccent = 0xffffff,
        .cardEdge = 0xebebeb,
        .shadow = black(0.011),
        .scrim = black(0.28),
        .trustStar = 0xff9500,
        .marks = {0x0a7aff, 0x34c759, 0xff9500, 0xff3b30},
        .inks = {0x0a5ccc, 0x1b7d3a, 0xa85800, 0xc4281c},
        .washes = {0xe4f0ff, 0xe3f6e8, 0xfff1de, 0xffe5e3},
    };
    return colors;
}

const ThemeColors &darkColors()
{
    static const ThemeColors colors = {
        .window = 0x1e1e20,
        .sidebar = 0x29292c,
        .card = 0x2a2a2d,
        .hairline = white(0.09),
        .quietFill = white(0.07),
        .hoverFill = white(0.12),
        .primary = 0xf5f5f7,
        .secondary = 0xa1a1a6,
        .tertiary = 0x7c7c82,
        .accent = 0x409cff,
        .accentFill = 0x1f6fdb,
        .dangerFill = 0xcf352b,
        .onAccent = 0xffffff,
        .cardEdge = 0x3d3d40,
        .shadow = black(0),
        .scrim = black(0.5),
        .trustStar = 0xff9f0a,
        .marks = {0x409cff, 0x30d158, 0xff9f0a, 0xff453a},
        .inks = {0x6cb3ff, 0x4cd873, 0xffb340, 0xff746c},
        .washes = {washOf(0x409cff), washOf(0x30d158), washOf(0xff9f0a), washOf(0xff453a)},
    };
    return colors;
}

ThemeColors withAccent(const ThemeColors &colors, const QColor &accent)
{
    constexpr int place = 0; // of the accent among the tints
    const bool isDark = luminance(colors.window) < 0.2;
    ThemeColors result = colors;
    result.accent = toldApart(accent, {colors.sidebar, colors.window, colors.card}, 3);
    result.accentFill = toldApart(accent, {colors.onAccent}, 4.5);
    QColor wash = accent;
    wash.setAlphaF(isDark ? 0.17F : 0.11F);
    result.marks[place] = result.accent;
    result.washes[place] = isDark ? wash : laidOver(wash, colors.card);
    result.inks[place] = toldApart(accent,
                                   {colors.window, colors.card, laidOver(colors.quietFill, colors.window),
                                    laidOver(result.washes[place], colors.window),
                                    laidOver(result.washes[place], colors.card)},
                                   4.5);
    return result;
}

const QList<QColor> &tileColors()
{
    static const QList<QColor> colors = {0x2f6fcb, 0x23803f, 0x8450cf, 0xc2511a, 0x6c6c72,
                                         0x15806f, 0xc03a6b, 0x8a6410, 0x4d5bce, 0x3a7686};
    return colors;
}

QColor laidOver(const QColor &upper, const QColor &lower)
{
    const auto mix = [a = upper.alphaF()](float over, float under) { return over * a + under * (1 - a); };
    return QColor::fromRgbF(mix(upper.redF(), lower.redF()), mix(upper.greenF(), lower.greenF()),
                            mix(upper.blueF(), lower.blueF()));
}

double contrastRatio(const QColor &upper, const QColor &lower)
{
    const double first = luminance(laidOver(upper, lower));
    const double second = luminance(lower);
    return (std::max(first, second) + 0.05) / (std::min(first, second) + 0.05);
}

} // namespace swabby
