#pragma once

#include "engine/ProcessSample.h"
#include "platform/Machine.h"

#include <optional>

/// Ends programs that a person agreed to end. Every call may run tools and wait: background work, or a
/// terminal.
namespace swabby::Quitting {

enum class Force { no, yes };

/// How a program is told.
enum class Means {
    question,  ///< so that it can still save
    terminate, ///< by the signal that most programs end at, saved or not
    kill,
};

enum class Outcome {
    told,    ///< nobody here can see what came of it
    ended,   ///< and that was seen
    isAsked, ///< it runs on and can still be asked: it may be asking something itself
    runsOn,  ///< it was told, and runs on
    notTold, ///< it has ended before, its id is another program's by now, or the system refuses
};

/// Who the shown program is, to be told later whether it still is. No value when it has ended, when another
/// program has its id by now, when only now the session is known to stand on it, and for what is never ended:
/// the system's first process and Swabby itself.
std::optional<ProcessIdentity> identify(const ProcessSample &shown, Machine &machine);

/// What quitting without force comes down to for this program now.
Means gentlestMeans(const ProcessIdentity &process, Machine &machine);

/// Tells the program, and waits as long as a person would to see it end. By a question on a machine where all
/// are asked, one that refuses is sent the signal to terminate; nowhere else a signal follows a question.
Outcome quit(const ProcessIdentity &process, Means means, Machine &machine, const StopToken &stop = {});

/// Whether the program is off the lists from then on.
inline bool isOver(Outcome outcome)
{
    return outcome == Outcome::told || outcome == Outcome::ended;
}

} // namespace swabby::Quitting
