#include "ui/qmltypes/ProgramIcon.h"

#include <QtGui/QPainter>
#include <QtQml/QQmlEngine>
#include <QtQuick/QQuickWindow>

#include <algorithm>
#include <cmath>

namespace swabby {
namespace {

constexpr int mostPixels = 256;

} // namespace

ProgramIcon::ProgramIcon(QQuickItem *parent) : QQuickPaintedItem(parent)
{
    setFlag(ItemHasContents, false);
}

void ProgramIcon::setTile(const ProgramTile &tile)
{
    if (tile == m_tile)
        return;
    m_tile = tile;
    Q_EMIT tileChanged();
    look();
}

void ProgramIcon::look()
{
    const double edge = std::max(width(), height());
    if (!isComponentComplete() || !isVisible() || window() == nullptr || edge <= 0)
        return;
    const int pixels = std::min(mostPixels, static_cast<int>(std::ceil(edge * window()->devicePixelRatio())));
    const IconKey key = {m_tile.owner, pixels};
    if (key == m_key)
        return;
    // The same program's icon in another size does until the right one is there.
    if (key.owner != m_key.owner)
        show({});
    m_key = key;
    IconStore *store = IconStore::of(qmlEngine(this));
    if (store == nullptr)
        return;
    connect(store, &IconStore::found, this, &ProgramIcon::take, Qt::UniqueConnection);
    if (const auto icon = store->icon(key, this))
        show(*icon);
}

void ProgramIcon::take(const IconKey &key)
{
    IconStore *store = IconStore::of(qmlEngine(this));
    if (key != m_key || store == nullptr)
        return;
    if (const auto icon = store->icon(key, this))
        show(*icon);
}

void ProgramIcon::show(const QImage &icon)
{
    const bool wasThere = isThere();
    m_icon = icon;
    setFlag(ItemHasContents, isThere());
    update();
    if (isThere() != wasThere)
        Q_EMIT isThereChanged();
}

void ProgramIcon::paint(QPainter *painter)
{
    QSizeF size(m_icon.size());
    size.scale(width(), height(), Qt::KeepAspectRatio);
    QRectF place({}, size);
    place.moveCenter({width() / 2, height() / 2});
    painter->setRenderHint(QPainter::SmoothPixmapTransform);
    painter->drawImage(place, m_icon);
}

void ProgramIcon::componentComplete()
{
    QQuickPaintedItem::componentComplete();
    look();
}

void ProgramIcon::itemChange(ItemChange change, const ItemChangeData &data)
{
    QQuickPaintedItem::itemChange(change, data);
    if (change == ItemSceneChange || change == ItemVisibleHasChanged ||
        change == ItemDevicePixelRatioHasChanged)
        look();
}

void ProgramIcon::geometryChange(const QRectF &now, const QRectF &before)
{
    QQuickPaintedItem::geometryChange(now, before);
    look();
}

} // namespace swabby
