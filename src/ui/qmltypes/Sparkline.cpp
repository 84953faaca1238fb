#include "ui/qmltypes/Sparkline.h"

#include <QtGui/QLinearGradient>
#include <QtGui/QPainter>
#include <QtGui/QPainterPath>

namespace swabby {
namespace {

constexpr double lineWidth = 1.5;

QColor withAlpha(QColor color, double alpha)
{
    color.setAlphaF(static_cast<float>(alpha));
    return color;
}

} // namespace

Sparkline::Sparkline(QQuickItem *parent) : QQuickPaintedItem(parent)
{
    setAntialiasing(true);
    connect(this, &Sparkline::changed, this, [this] { update(); });
}

void Sparkline::paint(QPainter *painter)
{
    for (const double share : {0.25, 0.5, 0.75}) {
        const double y = std::round(height() * (1 - share));
        painter->fillRect(QRectF(0, y, width(), 1), m_gridColor);
    }
    painter->setRenderHint(QPainter::Antialiasing);
    for (const SpeedStretch &stretch : m_day.stretches)
        paintStretch(painter, stretch);
}

void Sparkline::paintStretch(QPainter *painter, const SpeedStretch &stretch) const
{
    const auto placed = [this](QPointF point) {
        return QPointF(lineWidth / 2 + point.x() * (width() - lineWidth),
                       lineWidth + (1 - point.y()) * (height() - 2 * lineWidth));
    };
    if (stretch.size() == 1) {
        painter->setPen(Qt::NoPen);
        painter->setBrush(m_color);
        painter->drawEllipse(placed(stretch.first()), lineWidth, lineWidth);
        return;
    }
    QPainterPath line(placed(stretch.first()));
    for (const QPointF &point : stretch)
        line.lineTo(placed(point));
    QPainterPath area = line;
    area.lineTo(placed(stretch.last()).x(), height());
    area.lineTo(placed(stretch.first()).x(), height());

    QLinearGradient fade(0, 0, 0, height());
    fade.setColorAt(0, withAlpha(m_color, 0.34));
    fade.setColorAt(1, withAlpha(m_color, 0.02));
    painter->fillPath(area, fade);
    painter->strokePath(line, QPen(m_color, lineWidth, Qt::SolidLine, Qt::RoundCap, Qt::RoundJoin));
}

} // namespace swabby
