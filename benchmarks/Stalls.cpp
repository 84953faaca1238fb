// How long the main thread is kept from its events during 100 refreshes among 2,000 processes, beside the
// same time of an event loop with nothing to do.
#include "benchmarks/Crowd.h"
#include "benchmarks/StallMeter.h"
#include "machine/MachineChoice.h"
#include "state/AppState.h"

#include <QtCore/QCoreApplication>
#include <QtCore/QTemporaryDir>

#include <cstdio>

namespace {

using namespace swabby;

constexpr int refreshes = 100;
constexpr int processes = 2'000;

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
