#pragma once

#include <QtCore/QAbstractListModel>
#include <QtCore/QSet>
#include <QtQml/qqmlregistration.h>

#include <optional>

namespace swabby {

/// Rows of one value type, each known by a key. New rows are told from kept, moved and vanished ones, so
/// that a refresh redraws only what changed and leaves the focus where it is. While somebody points at it the
/// model is held: every row keeps its place, one that is listed no more is marked as leaving, a new one
/// stands at the end for as long as it is listed.
class RowModel : public QAbstractListModel {
    Q_OBJECT
    QML_ELEMENT
    QML_UNCREATABLE("made by the state's view")
    Q_PROPERTY(int count READ count NOTIFY countChanged)
    Q_PROPERTY(bool isHeld READ isHeld WRITE setHeld NOTIFY heldChanged)

public:
    /// The row's value, and whether it is leaving: "entry" and "isLeaving" in QML.
    enum Role { entryRole = Qt::UserRole, leavingRole };

    using QAbstractListModel::QAbstractListModel;

    /// With those that are leaving.
    int count() const { return static_cast<int>(m_rows.size()); }
    int rowCount(const QModelIndex &parent = {}) const override;
    QVariant data(const QModelIndex &index, int role) const override;
    QHash<int, QByteArray> roleNames() const override;

    template <typename Row, typename Key>
    void show(const QList<Row> &rows, Key keyOf)
    {
        Rows wanted;
        wanted.values.reserve(rows.size());
        wanted.keys.reserve(rows.size());
        for (const Row &row : rows) {
            wanted.values.append(QVariant::fromValue(row));
            wanted.keys.append(keyOf(row));
        }
        showRows(wanted);
    }

    bool isHeld() const { return m_isHeld; }
    /// What is let go is as it was shown last.
    void setHeld(bool isHeld);
    /// As it was shown last, also while it is held: for another list than the one that is pointed at.
    void settle();

Q_SIGNALS:
    void countChanged();
    void heldChanged();

private:
    struct Rows {
        QVariantList values;
        QStringList keys;
    };

    void showRows(const Rows &wanted);
    /// The rows that stood there at first, each in its place, with what is new behind them.
    Rows heldWith(const Rows &wanted) const;
    void place(const Rows &rows, const QSet<QString> &leaving);
    void dropVanished(const QStringList &keys);

    QVariantList m_rows;
    QStringList m_keys;
    QSet<QString> m_leaving; ///< the keys of those that are listed no more
    bool m_isHeld = false;
    qsizetype m_standing = 0;     ///< how many stood there when they were held; what came since may go again
    std::optional<Rows> m_wanted; ///< what was shown last, when that is not how it stands
};

} // namespace swabby
