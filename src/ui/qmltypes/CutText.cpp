#include "ui/qmltypes/CutText.h"

#include <QtGui/QMouseEvent>
#include <QtQuick/QQuickWindow>

namespace swabby {
namespace {

constexpr int restMilliseconds = 60;

/// What lies in front comes first; nothing beneath a sheet, which makes it unavailable.
QQuickItem *cutTextAt(QQuickItem *item, const QPointF &point)
{
    const bool isThere = item->contains(item->mapFromScene(point));
    if (!item->isVisible() || item->opacity() == 0 || !item->isEnabled() || (item->clip() && !isThere))
        return nullptr;
    const QList<QQuickItem *> children = item->childItems();
    for (auto child = children.crbegin(); child != children.crend(); ++child)
        if (QQuickItem *found = cutTextAt(*child, point))
            return found;
    return isThere && item->property("truncated").toBool() ? item : nullptr;
}

} // namespace

CutText::CutText(QQuickItem *parent) : QQuickItem(parent)
{
    m_rest.setSingleShot(true);
    m_rest.setInterval(restMilliseconds);
    connect(&m_rest, &QTimer::timeout, this, &CutText::look);
}

void CutText::itemChange(ItemChange change, const ItemChangeData &data)
{
    QQuickItem::itemChange(change, data);
    if (change != ItemSceneChange)
        return;
    if (m_window)
        m_window->removeEventFilter(this);
    m_window = data.window;
    if (m_window)
        m_window->installEventFilter(this);
}

bool CutText::eventFilter(QObject *watched, QEvent *event)
{
    if (event->type() == QEvent::MouseMove) {
        m_pointer = static_cast<QMouseEvent *>(event)->position();
        if (m_pointedAt && !m_pointedAt->contains(m_pointedAt->mapFromScene(m_pointer)))
            setPointedAt(nullptr);
        m_rest.start();
    } else if (event->type() == QEvent::Leave || event->type() == QEvent::MouseButtonPress ||
               event->type() == QEvent::Wheel) {
        m_rest.stop();
        setPointedAt(nullptr);
    }
    return QQuickItem::eventFilter(watched, event);
}

void CutText::look()
{
    if (m_window && !m_pointedAt)
        setPointedAt(cutTextAt(m_window->contentItem(), m_pointer));
}

void CutText::setPointedAt(QQuickItem *text)
{
    if (text == m_pointedAt)
        return;
    m_pointedAt = text;
    Q_EMIT pointedAtChanged();
}

} // namespace swabby
