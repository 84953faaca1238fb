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

public:
    explicit SymbolItem(QQuickItem *parent = nullptr);
    void paint(QPainter *painter) override;

Q_SIGNALS:
    void changed();

private:
    QString m_name;
    QColor m_color;
};

} // namespace swabby
