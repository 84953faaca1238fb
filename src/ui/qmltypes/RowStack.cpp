#include "ui/qmltypes/RowStack.h"

#include "ui/qmltypes/Theme.h"

#include <QtQml/QQmlContext>
#include <QtQml/QQmlEngine>
#include <QtQuick/QQuickWindow>

#include <algorithm>
#include <chrono>
#include <utility>

namespace swabby {
namespace {

// Enough for the keyboard to step on, and for a turn of the wheel.
constexpr qreal margin = 160;
constexpr qsizetype mostSpare = 24;
// A row takes a millisecond or some, and no frame should wait for a screenful of them, in whatever lists:
// they share the time in which rows may be begun for the next one.
using SteadyClock = std::chrono::steady_clock;
constexpr SteadyClock::duration mostForOneFrame = std::chrono::milliseconds(4);
SteadyClock::duration leftForFrame{};

bool isStill(const QQmlEngine *engine)
{
    const auto *theme = engine->findChild<Theme *>(QString(), Qt::FindDirectChildrenOnly);
    return theme != nullptr && theme->isStill();
}

} // namespace

RowStack::RowStack(QQuickItem *parent) : QQuickItem(parent) {}

RowStack::~RowStack() = default;

void RowStack::setRows(RowModel *rows)
{
    if (rows == m_rows)
        return;
    if (m_rows != nullptr)
        m_rows->disconnect(this);
    m_rows = rows;
    if (isComponentComplete())
        begin();
    Q_EMIT rowsChanged();
}

void RowStack::componentComplete()
{
    QQuickItem::componentComplete();
    begin();
    followPage();
}

void RowStack::begin()
{
    for (const auto &[row, item] : std::exchange(m_shown, {}))
        giveBack(item);
    m_heights.fill(m_rowHeight, m_rows == nullptr ? 0 : m_rows->count());
    if (m_rows != nullptr) {
        connect(m_rows, &RowModel::rowsInserted, this,
                [this](const QModelIndex &, int first, int last) { insertRows(first, last); });
        connect(m_rows, &RowModel::rowsRemoved, this,
                [this](const QModelIndex &, int first, int last) { removeRows(first, last); });
        connect(m_rows, &RowModel::rowsMoved, this,
                [this](const QModelIndex &, int first, int last, const QModelIndex &, int to) {
                    moveRows(first, last, to);
                });
        connect(m_rows, &RowModel::dataChanged, this,
                [this](const QModelIndex &first, const QModelIndex &last) {
                    showValues(first.row(), last.row());
                });
    }
    polish();
}

void RowStack::insertRows(int first, int last)
{
    const int many = last - first + 1;
    m_heights.insert(first, many, m_rowHeight);
    // What brought them had its part of this frame.
    leftForFrame = {};
    std::map<int, QQuickItem *> shown;
    for (const auto &[row, item] : m_shown)
        shown.emplace(row < first ? row : row + many, item);
    m_shown = std::move(shown);
    polish();
}

void RowStack::removeRows(int first, int last)
{
    const int many = last - first + 1;
    m_heights.remove(first, many);
    std::map<int, QQuickItem *> shown;
    for (const auto &[row, item] : m_shown)
        if (row < first || row > last)
            shown.emplace(row < first ? row : row - many, item);
        else
            giveBack(item);
    m_shown = std::move(shown);
    polish();
}

// One row at a time, and only towards the top: so the model moves them.
void RowStack::moveRows(int first, int last, int to)
{
    Q_UNUSED(last)
    m_heights.move(first, to);
    std::map<int, QQuickItem *> shown;
    for (const auto &[row, item] : m_shown)
        shown.emplace(row == first ? to : row >= to && row < first ? row + 1 : row, item);
    m_shown = std::move(shown);
    polish();
}

void RowStack::showValues(int first, int last)
{
    for (auto shown = m_shown.lower_bound(first); shown != m_shown.end() && shown->first <= last; ++shown)
        showIn(shown->second, shown->first);
}

QVariant RowStack::valueOf(int row, int role) const
{
    return m_rows->data(m_rows->index(row), role);
}

void RowStack::showIn(QQuickItem *item, int row) const
{
    item->setProperty("entry", valueOf(row, RowModel::entryRole));
    if (item->metaObject()->indexOfProperty("isLeaving") >= 0)
        item->setProperty("isLeaving", valueOf(row, RowModel::leavingRole));
}

void RowStack::geometryChange(const QRectF &now, const QRectF &before)
{
    QQuickItem::geometryChange(now, before);
    if (now != before)
        polish();
}

void RowStack::itemChange(ItemChange change, const ItemChangeData &data)
{
    QQuickItem::itemChange(change, data);
    if ((change == ItemParentHasChanged || change == ItemSceneChange) && isComponentComplete())
        followPage();
    if (change == ItemVisibleHasChanged)
        polish();
}

// The page moves what lies on it; a card above that grows moves what lies below it.
void RowStack::followPage()
{
    for (const QMetaObject::Connection &connection : std::exchange(m_following, {}))
        disconnect(connection);
    m_page = nullptr;
    for (QQuickItem *item = this; item != nullptr && m_page == nullptr; item = item->parentItem()) {
        if (item->inherits("QQuickFlickable"))
            m_page = item;
        m_following += connect(item, &QQuickItem::yChanged, this, &RowStack::lookAgain);
        m_following += connect(item, &QQuickItem::parentChanged, this, &RowStack::followPage);
    }
    if (m_page != nullptr)
        m_following += connect(m_page, &QQuickItem::heightChanged, this, &RowStack::lookAgain);
    polish();
}

void RowStack::lookAgain()
{
    leftForFrame = mostForOneFrame;
    polish();
}

RowStack::Band RowStack::band() const
{
    if (m_page == nullptr || !isVisible())
        return {0, 0};
    const qreal top = mapFromItem(m_page, QPointF(0, 0)).y();
    return {top - margin, top + m_page->height() + margin};
}

QList<qreal> RowStack::tops() const
{
    QList<qreal> tops;
    tops.reserve(m_heights.size() + 1);
    tops.append(0);
    for (const qreal height : m_heights)
        tops.append(tops.last() + height);
    return tops;
}

void RowStack::updatePolish()
{
    const Band wanted = band();
    const QList<qreal> edges = tops();
    const auto isWanted = [&](int row) {
        return edges.at(row) < wanted.to && edges.at(row + 1) > wanted.from;
    };
    for (auto shown = m_shown.begin(); shown != m_shown.end();) {
        if (isWanted(shown->first) || hasKeyboard(shown->second)) {
            ++shown;
            continue;
        }
        giveBack(shown->second);
        shown = m_shown.erase(shown);
    }
    if (isStill(qmlEngine(this)))
        leftForFrame = SteadyClock::duration::max();
    const auto first = std::upper_bound(edges.begin(), edges.end(), wanted.from) - edges.begin() - 1;
    for (auto row = static_cast<int>(std::max<qsizetype>(0, first)); row < m_heights.size() && isWanted(row);
         ++row)
        if (m_shown.count(row) == 0) {
            const SteadyClock::time_point begun = SteadyClock::now();
            if (m_spare.isEmpty() && leftForFrame <= SteadyClock::duration::zero()) {
                // After this frame: what is polished while others are belongs to the same one.
                QMetaObject::invokeMethod(this, &RowStack::lookAgain, Qt::QueuedConnection);
                break;
            }
            QQuickItem *item = make(row);
            if (item == nullptr)
                return;
            m_shown.emplace(row, item);
            leftForFrame -= SteadyClock::now() - begun;
        }
    place();
}

void RowStack::place()
{
    const QList<qreal> edges = tops();
    const QQuickItem *above = nullptr;
    for (const auto &[row, item] : m_shown) {
        item->setPosition({0, edges.at(row)});
        item->setWidth(width());
        // The keyboard and readers of the screen go through them as they stand.
        if (above != nullptr)
            item->stackAfter(above);
        above = item;
    }
    setImplicitHeight(edges.last());
}

QQuickItem *RowStack::make(int row)
{
    if (!m_spare.isEmpty()) {
        QQuickItem *item = m_spare.takeLast();
        showIn(item, row);
        item->setVisible(true);
        m_heights[row] = item->implicitHeight();
        return item;
    }
    if (m_delegate == nullptr)
        return nullptr;
    auto *item = qobject_cast<QQuickItem *>(m_delegate->beginCreate(m_delegate->creationContext()));
    if (item == nullptr) {
        qWarning("%s", qPrintable(m_delegate->errorString()));
        return nullptr;
    }
    item->setParent(this);
    item->setParentItem(this);
    item->setWidth(width());
    m_delegate->setInitialProperties(item, {{QStringLiteral("entry"), valueOf(row, RowModel::entryRole)}});
    m_delegate->completeCreate();
    showIn(item, row);
    m_heights[row] = item->implicitHeight();
    connect(item, &QQuickItem::implicitHeightChanged, this, [this, item] { noteHeight(item); });
    return item;
}

// Rows are alike: one that scrolled away comes back as another.
void RowStack::giveBack(QQuickItem *item)
{
    item->setVisible(false);
    if (m_spare.size() < mostSpare)
        m_spare.append(item);
    else
        item->deleteLater();
}

void RowStack::noteHeight(QQuickItem *item)
{
    for (const auto &[row, shown] : m_shown)
        if (shown == item && m_heights.at(row) != item->implicitHeight()) {
            m_heights[row] = item->implicitHeight();
            polish();
        }
}

bool RowStack::hasKeyboard(const QQuickItem *item) const
{
    const QQuickItem *focused = window() == nullptr ? nullptr : window()->activeFocusItem();
    return focused != nullptr && (focused == item || item->isAncestorOf(focused));
}

} // namespace swabby
