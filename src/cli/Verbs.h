#pragma once

#include "cli/Arguments.h"
#include "platform/Machine.h"

#include <memory>

namespace swabby {

/// What the program ends with.
enum ExitStatus { done = 0, notDone = 1, wrongUsage = 2 };

/// Carries a verb out on the machine. Needs a QCoreApplication; gives the exit status.
int runVerb(const Arguments &arguments, const std::shared_ptr<Machine> &machine);

// One each, in the file of its name.
int runSnapshot(const Arguments &arguments, const std::shared_ptr<Machine> &machine);
int runWatch(const Arguments &arguments, const std::shared_ptr<Machine> &machine);
int runSettings(const Arguments &arguments, const std::shared_ptr<Machine> &machine);

} // namespace swabby
