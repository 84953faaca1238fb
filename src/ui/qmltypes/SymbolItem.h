#pragma once

#include <QtQml/qqmlregistration.h>
#include <QtQuick/QQuickPaintedItem>

namespace swabby {

/// One symbol of the symbol table, in one colour.
class SymbolItem : public QQuickPaintedItem {
    Q_OBJECT
    QML_ELEMENT
    Q_PROPERTY(QString name READ name WRITE setName NOTIFY nameChanged)
    Q_PROPERTY(QColor color READ color WRITE setColor NOTIFY colorChanged)

public:
    explicit SymbolItem(QQuickItem *parent = nullptr);

    QString name() const { return m_name; }
    QColor color() const { return m_color; }
    void setName(const QString &name);
    void setColor(const QColor &color);

    void paint(QPainter *painter) override;

Q_SIGNALS:
    void nameChanged();
    void colorChanged();

private:
    QString m_name;
    QColor m_color;
};

} // namespace swabby
