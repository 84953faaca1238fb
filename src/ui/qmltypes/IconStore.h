#pragma once

#include "platform/Machine.h"

#include <QtCore/QCache>
#include <QtCore/QHash>
#include <QtCore/QObject>
#include <QtCore/QPointer>
#include <QtCore/QTimer>
#include <QtGui/QImage>

#include <chrono>
#include <deque>
#include <memory>
#include <optional>

class QQmlEngine;

namespace swabby {

class BackgroundWork;
class IconPainter;

/// Whose icon, and the edge of the square it fills.
struct IconKey {
    IconOwner owner;
    int pixels = 0;

    bool operator==(const IconKey &) const = default;
};
std::size_t qHash(const IconKey &key, std::size_t seed = 0);

/// The icons that the windows show, looked up and drawn in the background, each once and several side by
/// side. One that takes long makes way for the others and is drawn after them. Keeps a mebibyte of icons.
class IconStore : public QObject {
    Q_OBJECT

public:
    /// Where icons are found, and where the disk and the painter are waited for.
    IconStore(QQmlEngine *engine, std::shared_ptr<Machine> machine, BackgroundWork &work);
    ~IconStore() override;
    /// The engine's store; null when it has none.
    static IconStore *of(const QQmlEngine *engine);

    /// The icon, null for a program without one. No value while that is not known: found() then says when it
    /// is, unless the asker is gone by then.
    std::optional<QImage> icon(const IconKey &key, QObject *asker);
    /// Whether icons are still being looked up.
    bool isBusy() const { return !m_askers.isEmpty(); }

Q_SIGNALS:
    void found(const swabby::IconKey &key);

private:
    struct Turn {
        IconKey key;
        std::chrono::milliseconds time; ///< of the processor, which the drawing may take
    };

    void lookNext();
    void look(const Turn &turn);
    void take(const Turn &turn, const std::optional<QImage> &icon);
    /// The next one that somebody still asks for.
    std::optional<Turn> next(std::deque<Turn> &turns);
    void letRest();

    std::shared_ptr<Machine> m_machine;
    BackgroundWork &m_work;
    const std::shared_ptr<IconPainter> m_painter;
    QTimer m_resting; ///< until the painter rests
    QCache<IconKey, QImage> m_known;
    QHash<IconKey, QList<QPointer<QObject>>> m_askers;
    std::deque<Turn> m_waiting;
    std::deque<Turn> m_postponed; ///< those that took longer than their first turn
    int m_running = 0;            ///< in their first turn
    bool m_isRunningLong = false;
};

} // namespace swabby
