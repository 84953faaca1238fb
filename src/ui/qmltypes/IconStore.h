#pragma once

#include "platform/Machine.h"

#include <QtCore/QCache>
#include <QtCore/QObject>
#include <QtCore/QPointer>
#include <QtGui/QImage>

#include <deque>
#include <memory>
#include <optional>

class QQmlEngine;

namespace swabby {

class BackgroundWork;

/// Whose icon, and the edge of the square it fills.
struct IconKey {
    IconOwner owner;
    int pixels = 0;

    bool operator==(const IconKey &) const = default;
};
std::size_t qHash(const IconKey &key, std::size_t seed = 0);

/// The icons that the windows show, looked up in the background, one at a time, each once. Keeps a mebibyte
/// of them.
class IconStore : public QObject {
    Q_OBJECT

public:
    /// Where icons are found, and where the disk is waited for.
    IconStore(QQmlEngine *engine, std::shared_ptr<Machine> machine, BackgroundWork &work);
    /// The engine's store; null when it has none.
    static IconStore *of(const QQmlEngine *engine);

    /// The icon, null for a program without one. No value while that is not known: found() then says when it
    /// is, unless the asker is gone by then.
    std::optional<QImage> icon(const IconKey &key, QObject *asker);
    /// Whether icons are still being looked up.
    bool isBusy() const { return m_isLooking; }

Q_SIGNALS:
    void found(const swabby::IconKey &key);

private:
    struct Request {
        IconKey key;
        QPointer<QObject> asker;
    };

    void lookNext();

    std::shared_ptr<Machine> m_machine;
    BackgroundWork &m_work;
    QCache<IconKey, QImage> m_known;
    std::deque<Request> m_requests;
    bool m_isLooking = false;
};

} // namespace swabby
