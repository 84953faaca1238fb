#pragma once

#include "platform/ProcessControl.h"

#include <QtCore/QString>

#include <cstdint>
#include <vector>

namespace swabby {

struct RunningApplication {
    std::int32_t pid = 0;
    QString bundleId; ///< empty when it has none

    bool operator==(const RunningApplication &) const = default;
};

/// The applications that run for the user, as the desktop knows them.
class RunningApplications {
public:
    virtual ~RunningApplications() = default;

    /// May read the process list: background work only.
    virtual std::vector<RunningApplication> list() = 0;

    /// Whether quitting always begins with the question to an application, whatever it is. Otherwise canAsk()
    /// tells what can be asked. Does not wait.
    virtual bool asksAll() const = 0;

    /// Whether this program can be asked to quit now, so that it can still save. Blocks for a second or two
    /// at most.
    virtual bool canAsk(const ProcessIdentity &process) = 0;

    /// Asks a program to quit, so that it can still save. False when it cannot be asked or refuses. Blocks
    /// like canAsk().
    virtual bool terminate(const ProcessIdentity &process) = 0;
};

} // namespace swabby
