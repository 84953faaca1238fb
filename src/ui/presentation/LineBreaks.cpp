#include "ui/presentation/LineBreaks.h"

#include <QtGui/QTextLayout>

#include <algorithm>
#include <cmath>

namespace swabby {
namespace {

// What a line holds, and how much of the width that takes.
struct Line {
    QStringView words;
    double width = 0;
};

// Broken between words only.
QList<Line> linesOf(const QString &text, const QFont &font, double width)
{
    QTextOption option;
    option.setWrapMode(QTextOption::WordWrap);
    option.setUseDesignMetrics(true);
    QTextLayout layout(text, font);
    layout.setTextOption(option);
    layout.beginLayout();
    QList<Line> lines;
    for (QTextLine line = layout.createLine(); line.isValid(); line = layout.createLine()) {
        line.setLineWidth(width);
        lines.append(
            {QStringView(text).mid(line.textStart(), line.textLength()).trimmed(), line.naturalTextWidth()});
    }
    layout.endLayout();
    return lines;
}

bool endsInLoneWord(const QList<Line> &lines)
{
    return lines.size() > 1 && !lines.last().words.contains(u' ');
}

bool fits(const QList<Line> &lines, double width)
{
    return std::all_of(lines.begin(), lines.end(), [width](const Line &line) { return line.width <= width; });
}

} // namespace

double roomForLastLine(const QString &text, const QFont &font, double width)
{
    if (width <= 0 || text.contains(u'\n'))
        return 0;
    const QList<Line> lines = linesOf(text, font, width);
    if (!endsInLoneWord(lines) || !fits(lines, width) || lines.last().width > width / 3)
        return 0;
    // The line above parts with its last word.
    const double narrower = std::floor(lines.at(lines.size() - 2).width) - 1;
    const QList<Line> moved = linesOf(text, font, narrower);
    const bool isBetter = moved.size() == lines.size() && fits(moved, narrower) && !endsInLoneWord(moved);
    return isBetter ? width - narrower : 0;
}

} // namespace swabby
