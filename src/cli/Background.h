#pragma once

#include "platform/BackgroundWork.h"
#include "platform/Machine.h"
#include "platform/ScanControl.h"

#include <QtCore/QCoreApplication>
#include <QtCore/QFutureWatcher>

#include <memory>
#include <utility>

namespace swabby {

/// What a long search on a terminal is handed: it ends with the program, and tells a terminal how far it is.
ScanControl terminalControl(const Machine &machine);
/// Takes the line about progress away again.
void clearProgress();

/// Does slow work beside the event loop, so that an interruption is heard, hands on what it gives and runs
/// until somebody ends the loop. Gives the status it was ended with.
template <typename Work, typename Then>
int runInBackground(Machine &machine, Work work, Then then)
{
    using Result = std::invoke_result_t<Work>;
    BackgroundWork threads(1);
    QFutureWatcher<Result> watcher;
    QObject::connect(&watcher, &QFutureWatcher<Result>::finished, [&] {
        clearProgress();
        then(watcher.result());
    });
    watcher.setFuture(threads.ask(std::move(work)));
    const int status = QCoreApplication::exec();
    machine.stop.requestStop();
    return status;
}

} // namespace swabby
