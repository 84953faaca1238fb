#pragma once

#include "ui/presentation/SpeedHistory.h"

#include <QtGui/QColor>
#include <QtQml/qqmlregistration.h>
#include <QtQuick/QQuickPaintedItem>

namespace swabby {

/// The day's stretches on their way from the history to the line.
struct SpeedDay {
    Q_GADGET
    QML_VALUE_TYPE(speedDay)

public:
    QList<SpeedStretch> stretches;

    bool operator==(const SpeedDay &) const = default;
};

/// The day as a line with a soft fill below it; pauses stay blank.
class Sparkline : public QQuickPaintedItem {
    Q_OBJECT
    QML_ELEMENT
    Q_PROPERTY(swabby::SpeedDay day MEMBER m_day NOTIFY changed)
    Q_PROPERTY(QColor color MEMBER m_color NOTIFY changed)
    Q_PROPERTY(QColor gridColor MEMBER m_gridColor NOTIFY changed)

public:
    explicit Sparkline(QQuickItem *parent = nullptr);
    void paint(QPainter *painter) override;

Q_SIGNALS:
    void changed();

private:
    void paintStretch(QPainter *painter, const SpeedStretch &stretch) const;

    SpeedDay m_day;
    QColor m_color;
    QColor m_gridColor;
};

} // namespace swabby
