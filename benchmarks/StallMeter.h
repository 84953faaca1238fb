#pragma once

#include <QtCore/QElapsedTimer>
#include <QtCore/QTimer>

#include <algorithm>
#include <cstdio>
#include <vector>

namespace swabby {

/// Notes how much later than asked for each tick of a one-millisecond timer comes.
class StallMeter : public QObject {
public:
    StallMeter()
    {
        m_timer.setTimerType(Qt::PreciseTimer);
        m_timer.setInterval(1);
        connect(&m_timer, &QTimer::timeout, this, [this] {
            m_stalls.push_back(std::max(0.0, static_cast<double>(m_clock.nsecsElapsed()) / 1e6 - 1));
            m_clock.restart();
        });
    }

    void start()
    {
        m_clock.start();
        m_timer.start();
    }

    void report(const char *what)
    {
        m_timer.stop();
        std::sort(m_stalls.begin(), m_stalls.end());
        const auto at = [&](double share) {
            return m_stalls[static_cast<std::size_t>(share * static_cast<double>(m_stalls.size() - 1))];
        };
        std::printf("%-22s %8zu ticks   p50 %.3f ms   p99 %.3f ms   max %.3f ms\n", what, m_stalls.size(),
                    at(0.5), at(0.99), at(1));
    }

private:
    QTimer m_timer;
    QElapsedTimer m_clock;
    std::vector<double> m_stalls;
};

} // namespace swabby
