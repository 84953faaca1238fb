// How long the main thread is kept from its events during 100 refreshes among 2,000 processes, beside the
// same time of an event loop with nothing to do.
#include "app/machine/MachineChoice.h"
#include "bench/Crowd.h"
#include "engine/state/AppState.h"

#include <QtCore/QCoreApplication>
#include <QtCore/QElapsedTimer>
#include <QtCore/QTemporaryDir>

#include <algorithm>
#include <cstdio>

namespace {

using namespace swabby;

constexpr int refreshes = 100;
constexpr int processes = 2'000;

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

} // namespace

int main(int argc, char **argv)
{
    const QTemporaryDir home;
    for (const char *place : {"HOME", "XDG_DATA_HOME", "XDG_CONFIG_HOME"})
        qputenv(place, home.path().toUtf8());
    prepareProcess();
    QCoreApplication application(argc, argv);
    const Crowd crowd(processes);
    std::printf("%d processes, %d refreshes\n", Crowd::runningProcesses(), refreshes);

    QElapsedTimer whole;
    whole.start();
    {
        QString problem;
        AppState state(chooseMachine(std::nullopt, &problem), Record::everything);
        StallMeter meter;
        QObject::connect(&state, &AppState::applied, &state, [&] {
            if (state.refreshesApplied() < refreshes)
                state.refresh();
            else
                QCoreApplication::quit();
        });
        meter.start();
        state.refresh();
        QCoreApplication::exec();
        meter.report("while refreshing");
    }
    StallMeter control;
    QTimer::singleShot(static_cast<int>(whole.elapsed()), &application, &QCoreApplication::quit);
    control.start();
    QCoreApplication::exec();
    control.report("with nothing to do");
}
