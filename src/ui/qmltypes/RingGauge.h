#pragma once

#include <QtGui/QColor>
#include <QtQml/qqmlregistration.h>
#include <QtQuick/QQuickPaintedItem>

namespace swabby {

/// A share of a whole as a ring, from the top clockwise.
class RingGauge : public QQuickPaintedItem {
    Q_OBJECT
    QML_ELEMENT
    Q_PROPERTY(double fraction MEMBER m_fraction NOTIFY changed)
    Q_PROPERTY(QColor color MEMBER m_color NOTIFY changed)
    Q_PROPERTY(QColor trackColor MEMBER m_trackColor NOTIFY changed)
    Q_PROPERTY(double thickness MEMBER m_thickness NOTIFY changed)

public:
    explicit RingGauge(QQuickItem *parent = nullptr);
    void paint(QPainter *painter) override;

Q_SIGNALS:
    void changed();

private:
    double m_fraction = 0;
    QColor m_color;
    QColor m_trackColor;
    double m_thickness = 8;
};

} // namespace swabby
