#pragma once

#include "cleanup/Search.h"
#include "cli/Output.h"
#include "cli/Verbs.h"
#include "platform/BackgroundWork.h"
#include "platform/Machine.h"
#include "platform/ScanControl.h"

#include <QtCore/QCoreApplication>
#include <QtCore/QFutureWatcher>

#include <memory>
#include <optional>
#include <type_traits>
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

/// The same for a search. When nothing may be searched it says why, hands on nothing and ends with that.
template <typename Work, typename Then>
int searchInBackground(Machine &machine, Work work, Then then)
{
    struct Found {
        std::optional<std::invoke_result_t<Work, const Search &>> result;
        QString problem;
    };
    const auto searching = [&, control = terminalControl(machine)]() -> Found {
        const Search search = Search::on(machine, control);
        if (!search.problem().isEmpty())
            return {std::nullopt, search.problem()};
        return {work(search), {}};
    };
    return runInBackground(machine, searching, [&](const Found &found) {
        if (found.result) {
            then(*found.result);
            return;
        }
        printProblem(QStringLiteral("swabbyctl: ") + found.problem);
        QCoreApplication::exit(notDone);
    });
}

} // namespace swabby
