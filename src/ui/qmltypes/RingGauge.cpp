#include "ui/qmltypes/RingGauge.h"

#include <QtGui/QPainter>

namespace swabby {

RingGauge::RingGauge(QQuickItem *parent) : QQuickPaintedItem(parent)
{
    setAntialiasing(true);
    connect(this, &RingGauge::changed, this, [this] { update(); });
}

void RingGauge::paint(QPainter *painter)
{
    constexpr int sixteenths = 16; // of a degree, as arcs are measured
    const QRectF ring =
        boundingRect().adjusted(m_thickness / 2, m_thickness / 2, -m_thickness / 2, -m_thickness / 2);
    painter->setRenderHint(QPainter::Antialiasing);
    painter->setPen(QPen(m_trackColor, m_thickness));
    painter->drawEllipse(ring);
    painter->setPen(QPen(m_color, m_thickness, Qt::SolidLine, Qt::RoundCap));
    painter->drawArc(ring, 90 * sixteenths, -qRound(m_fraction * 360 * sixteenths));
}

} // namespace swabby
