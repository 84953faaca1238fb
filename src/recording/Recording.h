#pragma once

#include "platform/Machine.h"
#include "platform/ScanControl.h"
#include "recording/Rewriting.h"
#include "state/MachineSampler.h"

namespace swabby {

/// What came of a recording.
struct Recording {
    int answers = 0;   ///< of tools
    QString problem{}; ///< why it is not whole; empty when it is
    MachineSample sample{};
};

/// Looks the machine over once, as its windows do, and writes a machine folder of it: its figures, what its
/// tools said, and files as large and as old as those that were found, with nothing in them. The folder is to
/// be empty or missing. Blocks for as long as all searches take; when those are stopped nothing is written.
Recording recordMachine(Machine &machine, const QString &folder, PeoplesNames names,
                        const ScanControl &control);

} // namespace swabby
