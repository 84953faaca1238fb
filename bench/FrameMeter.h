#pragma once

#include <QtCore/QAbstractEventDispatcher>
#include <QtQuick/QQuickWindow>

#include <algorithm>
#include <chrono>
#include <cstdio>
#include <vector>

namespace swabby {

/// How long the main thread is busy for each frame of a window: everything it does between two frames, from
/// the event that changed something to the picture that is handed over, without what it waits. The software
/// renderer draws on that thread.
class FrameMeter : public QObject {
public:
    explicit FrameMeter(QQuickWindow &window)
    {
        auto *dispatcher = QAbstractEventDispatcher::instance();
        connect(dispatcher, &QAbstractEventDispatcher::awake, this, [this] { m_since = Clock::now(); });
        connect(dispatcher, &QAbstractEventDispatcher::aboutToBlock, this, [this] { count(); });
        connect(&window, &QQuickWindow::frameSwapped, this, [this] {
            count();
            frames.push_back(std::exchange(m_busy, 0));
        });
    }

    /// What was done until now belongs to no frame.
    void begin()
    {
        count();
        m_busy = 0;
        frames.clear();
    }

    std::vector<double> frames; ///< in milliseconds

private:
    using Clock = std::chrono::steady_clock;

    void count()
    {
        const Clock::time_point now = Clock::now();
        m_busy += std::chrono::duration<double, std::milli>(now - m_since).count();
        m_since = now;
    }

    Clock::time_point m_since = Clock::now();
    double m_busy = 0;
};

inline void printFrames(const char *what, std::vector<double> frames)
{
    if (frames.empty()) {
        std::printf("%-40s nothing was drawn\n", what);
        return;
    }
    std::sort(frames.begin(), frames.end());
    const auto at = [&](double share) {
        return frames[static_cast<std::size_t>(share * static_cast<double>(frames.size() - 1) + 0.5)];
    };
    std::printf("%-40s %5zu frames   p50 %6.2f ms   p99 %6.2f ms   max %6.2f ms\n", what, frames.size(),
                at(0.5), at(0.99), at(1));
}

} // namespace swabby
