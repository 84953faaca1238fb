#include "ui/qmltypes/RowModel.h"

#include <QtCore/QSet>

namespace swabby {

int RowModel::rowCount(const QModelIndex &parent) const
{
    return parent.isValid() ? 0 : count();
}

QVariant RowModel::data(const QModelIndex &index, int role) const
{
    if (role != Qt::UserRole || !index.isValid() || index.row() >= count())
        return {};
    return m_rows.at(index.row());
}

QHash<int, QByteArray> RowModel::roleNames() const
{
    return {{Qt::UserRole, "entry"}};
}

void RowModel::showValues(const QVariantList &rows, const KeyOf &keyOf)
{
    const int countBefore = count();
    QStringList keys;
    keys.reserve(rows.size());
    for (const QVariant &row : rows)
        keys.append(keyOf(row));

    dropVanished(keys);
    const QSet<QString> kept(m_keys.begin(), m_keys.end());
    for (int place = 0; place < rows.size(); ++place) {
        // A new key need not be looked for; one that stayed is found at once.
        const auto found =
            kept.contains(keys.at(place)) ? static_cast<int>(m_keys.indexOf(keys.at(place), place)) : -1;
        if (found < 0) {
            beginInsertRows({}, place, place);
            m_rows.insert(place, rows.at(place));
            m_keys.insert(place, keys.at(place));
            endInsertRows();
            continue;
        }
        if (found != place) {
            beginMoveRows({}, found, found, {}, place);
            m_rows.move(found, place);
            m_keys.move(found, place);
            endMoveRows();
        }
        if (m_rows.at(place) != rows.at(place)) {
            m_rows[place] = rows.at(place);
            Q_EMIT dataChanged(index(place), index(place));
        }
    }
    // What is left over has a key that is listed, but fewer times.
    if (count() > rows.size()) {
        beginRemoveRows({}, static_cast<int>(rows.size()), count() - 1);
        m_rows.resize(rows.size());
        m_keys.resize(rows.size());
        endRemoveRows();
    }
    if (count() != countBefore)
        Q_EMIT countChanged();
}

void RowModel::dropVanished(const QStringList &keys)
{
    const QSet<QString> listed(keys.begin(), keys.end());
    for (int place = count() - 1; place >= 0; --place) {
        if (listed.contains(m_keys.at(place)))
            continue;
        beginRemoveRows({}, place, place);
        m_rows.removeAt(place);
        m_keys.removeAt(place);
        endRemoveRows();
    }
}

} // namespace swabby
