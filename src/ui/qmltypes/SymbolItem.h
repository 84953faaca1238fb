#pragma once

#include <QtQml/qqmlregistration.h>
#include <QtQuick/QQuickPaintedItem>

namespace swabby {

/// One symbol of the symbol table, in one colour.
class SymbolItem : public QQuickPaintedItem {
    Q_OBJECT
    QML_ELEMENT
    Q_PROPERTY(QString name MEMBER m_name NOTIFY changed)
    Q_PROPERTY(QColor color MEMBER m_color NOTIFY changed)
    /// Of its strokes, in a box of 24.
    Q_PROPERTY(double weight MEMBER m_weight NOTIFY changed)

public:
    explicit SymbolItem(QQuickItem *parent = nullptr);
    void paint(QPainter *painter) override;

Q_SIGNALS:
    void changed();

private:
    QString m_name;
    QColor m_color;
    double m_weight = 1.9;
};

} // namespace swabby
