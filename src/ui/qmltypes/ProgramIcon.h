#pragma once

#include "ui/presentation/ProgramTile.h"
#include "ui/qmltypes/IconStore.h"

#include <QtQml/qqmlregistration.h>
#include <QtQuick/QQuickPaintedItem>

namespace swabby {

/// A program's own icon, as soon as it is known; nothing for a program without one.
class ProgramIcon : public QQuickPaintedItem {
    Q_OBJECT
    QML_ELEMENT
    Q_PROPERTY(swabby::ProgramTile tile READ tile WRITE setTile NOTIFY tileChanged)
    Q_PROPERTY(bool isThere READ isThere NOTIFY isThereChanged)

public:
    explicit ProgramIcon(QQuickItem *parent = nullptr);

    const ProgramTile &tile() const { return m_tile; }
    void setTile(const ProgramTile &tile);
    bool isThere() const { return !m_icon.isNull(); }

    void paint(QPainter *painter) override;

Q_SIGNALS:
    void tileChanged();
    void isThereChanged();

protected:
    void componentComplete() override;
    void itemChange(ItemChange change, const ItemChangeData &data) override;
    void geometryChange(const QRectF &now, const QRectF &before) override;

private:
    /// Asks for what fits the place it has now.
    void look();
    void take(const swabby::IconKey &key);
    void show(const QImage &icon);

    ProgramTile m_tile;
    IconKey m_key;
    QImage m_icon;
};

} // namespace swabby
