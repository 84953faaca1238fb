#pragma once

#include <QtCore/QAbstractListModel>
#include <QtQml/qqmlregistration.h>

#include <functional>

namespace swabby {

/// Rows of one value type, each known by a key. New rows are told from kept, moved and vanished ones, so
/// that a refresh redraws only what changed and leaves the focus where it is.
class RowModel : public QAbstractListModel {
    Q_OBJECT
    QML_ELEMENT
    QML_UNCREATABLE("made by the state's view")
    Q_PROPERTY(int count READ count NOTIFY countChanged)

public:
    using KeyOf = std::function<QString(const QVariant &)>;

    using QAbstractListModel::QAbstractListModel;

    int count() const { return static_cast<int>(m_rows.size()); }
    int rowCount(const QModelIndex &parent = {}) const override;
    QVariant data(const QModelIndex &index, int role) const override;
    QHash<int, QByteArray> roleNames() const override;

    template <typename Row, typename Key>
    void show(const QList<Row> &rows, Key keyOf)
    {
        QVariantList values;
        values.reserve(rows.size());
        for (const Row &row : rows)
            values.append(QVariant::fromValue(row));
        showValues(values, [&](const QVariant &value) { return keyOf(value.value<Row>()); });
    }

Q_SIGNALS:
    void countChanged();

private:
    void showValues(const QVariantList &rows, const KeyOf &keyOf);
    void dropVanished(const QStringList &keys);

    QVariantList m_rows;
    QStringList m_keys;
};

} // namespace swabby
