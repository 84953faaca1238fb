#pragma once

#include <QtQuick/QQuickWindow>

#include <algorithm>
#include <cstdio>
#include <ctime>
#include <utility>
#include <vector>

namespace swabby {

/// How long the main thread is busy for each frame of a window: everything it does between two frames, from
/// the event that changed something to the picture that is handed over, by the processor's clock, which
/// counts neither what it waits nor what others do meanwhile. The software renderer draws on that thread.
class FrameMeter : public QObject {
public:
    explicit FrameMeter(QQuickWindow &window)
    {
        connect(&window, &QQuickWindow::frameSwapped, this, [this] {
            const double now = busy();
            frames.push_back(now - std::exchange(m_since, now));
        });
    }

    /// What was done until now belongs to no frame.
    void begin()
    {
        m_since = busy();
        frames.clear();
    }

    std::vector<double> frames; ///< in milliseconds

private:
    /// The thread's processor time in milliseconds.
    static double busy()
    {
        std::timespec time{};
        ::clock_gettime(CLOCK_THREAD_CPUTIME_ID, &time);
        return static_cast<double>(time.tv_sec) * 1e3 + static_cast<double>(time.tv_nsec) / 1e6;
    }

    double m_since = busy();
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
