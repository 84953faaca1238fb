#pragma once

#include "ui/qmltypes/RowModel.h"

#include <QtQml/QQmlComponent>
#include <QtQuick/QQuickItem>

#include <map>

namespace swabby {

/// The rows of a model, one below the other, of which only those exist that are to be seen on the scrolling
/// page around them, some above and below, and the one that has the keyboard. It is as high as all of them
/// together.
class RowStack : public QQuickItem {
    Q_OBJECT
    QML_ELEMENT
    Q_PROPERTY(swabby::RowModel *rows READ rows WRITE setRows NOTIFY rowsChanged)
    /// Makes a row; what it makes has a property "entry" for the row's value, and may have one "isLeaving".
    Q_PROPERTY(QQmlComponent *delegate MEMBER m_delegate NOTIFY delegateChanged)
    /// How high a row is held to be until it has been seen.
    Q_PROPERTY(qreal rowHeight MEMBER m_rowHeight NOTIFY rowHeightChanged)
    Q_CLASSINFO("DefaultProperty", "delegate")

public:
    explicit RowStack(QQuickItem *parent = nullptr);
    ~RowStack() override;

    RowModel *rows() const { return m_rows; }
    void setRows(RowModel *rows);

Q_SIGNALS:
    void rowsChanged();
    void delegateChanged();
    void rowHeightChanged();

protected:
    void updatePolish() override;
    void componentComplete() override;
    void geometryChange(const QRectF &now, const QRectF &before) override;
    void itemChange(ItemChange change, const ItemChangeData &data) override;

private Q_SLOTS:
    void lookAgain();

private:
    struct Band {
        qreal from;
        qreal to;
    };

    /// What of it is to be seen, with a margin, from its own top; empty before it lies on a page.
    Band band() const;
    void followPage();
    void begin();
    void insertRows(int first, int last);
    void removeRows(int first, int last);
    void moveRows(int first, int last, int to);
    void showValues(int first, int last);
    QVariant valueOf(int row, int role) const;
    void showIn(QQuickItem *item, int row) const;
    /// Where each row begins, and where the last one ends.
    QList<qreal> tops() const;
    void place();
    QQuickItem *make(int row);
    void giveBack(QQuickItem *item);
    void noteHeight(QQuickItem *item);
    bool hasKeyboard(const QQuickItem *item) const;

    RowModel *m_rows = nullptr;
    QQmlComponent *m_delegate = nullptr;
    qreal m_rowHeight = 40;
    QQuickItem *m_page = nullptr; ///< what scrolls
    QList<qreal> m_heights;       ///< of every row
    std::map<int, QQuickItem *> m_shown;
    QList<QQuickItem *> m_spare;
    QList<QMetaObject::Connection> m_following;
};

} // namespace swabby
