#pragma once

#include <QtCore/QPointF>
#include <QtCore/QPointer>
#include <QtCore/QTimer>
#include <QtQml/qqmlregistration.h>
#include <QtQuick/QQuickItem>

namespace swabby {

/// Knows which text of its window ends in an ellipsis under the pointer, so that one tooltip can say the
/// whole of any, and no text needs to listen for itself.
class CutText : public QQuickItem {
    Q_OBJECT
    QML_ELEMENT
    /// None while no such text is pointed at.
    Q_PROPERTY(QQuickItem *pointedAt READ pointedAt NOTIFY pointedAtChanged)

public:
    explicit CutText(QQuickItem *parent = nullptr);

    QQuickItem *pointedAt() const { return m_pointedAt; }

Q_SIGNALS:
    void pointedAtChanged();

protected:
    void itemChange(ItemChange change, const ItemChangeData &data) override;
    bool eventFilter(QObject *watched, QEvent *event) override;

private:
    void look();
    void setPointedAt(QQuickItem *text);

    QPointer<QQuickWindow> m_window;
    QPointer<QQuickItem> m_pointedAt;
    QPointF m_pointer; ///< in the window
    QTimer m_rest;     ///< once it moves no more
};

} // namespace swabby
