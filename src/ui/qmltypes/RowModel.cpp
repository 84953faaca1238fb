#include "ui/qmltypes/RowModel.h"

#include <QtCore/QHash>

#include <utility>

namespace swabby {

int RowModel::rowCount(const QModelIndex &parent) const
{
    return parent.isValid() ? 0 : count();
}

QVariant RowModel::data(const QModelIndex &index, int role) const
{
    if (!index.isValid() || index.row() >= count())
        return {};
    if (role == leavingRole)
        return m_leaving.contains(m_keys.at(index.row()));
    return role == entryRole ? m_rows.at(index.row()) : QVariant();
}

QHash<int, QByteArray> RowModel::roleNames() const
{
    return {{entryRole, "entry"}, {leavingRole, "isLeaving"}};
}

void RowModel::showRows(const Rows &wanted)
{
    if (!m_isHeld || m_rows.isEmpty()) {
        m_wanted.reset();
        m_standing = wanted.keys.size();
        place(wanted, {});
        return;
    }
    const Rows held = heldWith(wanted);
    const QSet<QString> listed(wanted.keys.begin(), wanted.keys.end());
    place(held, QSet(held.keys.begin(), held.keys.end()) - listed);
    m_wanted = wanted;
}

RowModel::Rows RowModel::heldWith(const Rows &wanted) const
{
    Rows held;
    const QSet<QString> listed(wanted.keys.begin(), wanted.keys.end());
    for (qsizetype row = 0; row < m_keys.size(); ++row)
        if (row < m_standing || listed.contains(m_keys.at(row))) {
            held.values.append(m_rows.at(row));
            held.keys.append(m_keys.at(row));
        }
    QHash<QString, qsizetype> places;
    for (qsizetype row = held.keys.size() - 1; row >= 0; --row)
        places.insert(held.keys.at(row), row);
    for (qsizetype row = 0; row < wanted.keys.size(); ++row) {
        const auto stands = places.constFind(wanted.keys.at(row));
        if (stands == places.constEnd()) {
            held.values.append(wanted.values.at(row));
            held.keys.append(wanted.keys.at(row));
        } else {
            held.values[*stands] = wanted.values.at(row);
        }
    }
    return held;
}

void RowModel::setHeld(bool isHeld)
{
    if (isHeld == m_isHeld)
        return;
    m_isHeld = isHeld;
    if (!isHeld)
        settle();
    m_standing = m_keys.size();
    Q_EMIT heldChanged();
}

void RowModel::settle()
{
    if (const auto wanted = std::exchange(m_wanted, std::nullopt))
        place(*wanted, {});
    m_standing = m_keys.size();
}

void RowModel::place(const Rows &wanted, const QSet<QString> &leaving)
{
    const auto &[rows, keys] = wanted;
    const int countBefore = count();
    const QSet<QString> wereLeaving = std::exchange(m_leaving, leaving);
    dropVanished(keys);
    const QSet<QString> kept(m_keys.begin(), m_keys.end());
    for (int place = 0; place < rows.size(); ++place) {
        // A new key need not be looked for; one that stayed is found at once.
        const auto found =
            kept.contains(keys.at(place)) ? static_cast<int>(m_keys.indexOf(keys.at(place), place)) : -1;
        if (found < 0) {
            // With those that follow and are new too.
            int last = place;
            while (last + 1 < rows.size() && !kept.contains(keys.at(last + 1)))
                ++last;
            beginInsertRows({}, place, last);
            for (; place <= last; ++place) {
                m_rows.insert(place, rows.at(place));
                m_keys.insert(place, keys.at(place));
            }
            endInsertRows();
            --place;
            continue;
        }
        if (found != place) {
            beginMoveRows({}, found, found, {}, place);
            m_rows.move(found, place);
            m_keys.move(found, place);
            endMoveRows();
        }
        const bool hasTurned = leaving.contains(keys.at(place)) != wereLeaving.contains(keys.at(place));
        if (hasTurned || m_rows.at(place) != rows.at(place)) {
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
    for (int last = count() - 1; last >= 0; --last) {
        if (listed.contains(m_keys.at(last)))
            continue;
        int first = last;
        while (first > 0 && !listed.contains(m_keys.at(first - 1)))
            --first;
        beginRemoveRows({}, first, last);
        m_rows.remove(first, last - first + 1);
        m_keys.remove(first, last - first + 1);
        endRemoveRows();
        last = first;
    }
}

} // namespace swabby
