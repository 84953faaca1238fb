#pragma once

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

    /// Whether this kind of machine knows how to ask an application to quit. Does not wait.
    virtual bool canAsk() const = 0;

    /// Asks an application to quit, so that it can still save. False when no application has this pid, it
    /// refuses, or this kind of machine knows no such question.
    virtual bool terminate(std::int32_t pid) = 0;
};

} // namespace swabby
