#include "ui/qmltypes/RemovableList.h"

#include <QtQml/QQmlEngine>

#include <algorithm>

namespace swabby {
namespace {

constexpr std::size_t rowsAtOnce = 100;

} // namespace

RemovableList::RemovableList(QObject *parent) : QObject(parent), m_limit(rowsAtOnce)
{
    QJSEngine::setObjectOwnership(this, QJSEngine::CppOwnership);
    QJSEngine::setObjectOwnership(&m_rows, QJSEngine::CppOwnership);
}

void RemovableList::show(const std::vector<RemovableItem> &items, const RowOf &rowOf)
{
    const std::size_t shown = std::min(items.size(), m_limit);
    QList<RemovableRowText> rows;
    for (std::size_t place = 0; place < shown; ++place)
        rows.append(rowOf(items.at(place)));
    m_rows.show(rows, [](const RemovableRowText &row) { return row.id; });
    if (m_hidden == items.size() - shown)
        return;
    m_hidden = items.size() - shown;
    Q_EMIT changed();
}

void RemovableList::setText(const ScanText &text)
{
    if (text == m_text)
        return;
    m_text = text;
    Q_EMIT changed();
}

QString RemovableList::moreLabel() const
{
    if (m_hidden == 0)
        return {};
    return QStringLiteral("Show %1 more").arg(std::min(m_hidden, rowsAtOnce));
}

void RemovableList::showMore()
{
    m_limit += rowsAtOnce;
    Q_EMIT moreWanted();
}

} // namespace swabby
