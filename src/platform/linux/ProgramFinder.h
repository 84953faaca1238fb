#pragma once

#include "platform/linux/DesktopApplications.h"
#include "platform/linux/ProcessStat.h"

#include <memory>
#include <string>

namespace swabby {

/// What a process runs. Bytes as the kernel gives them.
struct Program {
    std::string path;   ///< absolute where it can be known; "[name]" for the kernel's own threads
    std::string name;   ///< what a person calls it
    std::string title;  ///< of one that is no application and runs a script: what that is called
    std::string script; ///< for an interpreter: the absolute path of the script it runs
    bool isApp = false;
    bool isBrowser = false;
};

/// Finds out what a process runs: slow in comparison (a few system calls), so asked once per program.
/// Not safe for several threads at once.
class ProgramFinder {
public:
    ProgramFinder(std::string procRoot, DesktopApplications applications);

    /// Reads the installed applications again where they have changed; true when they have, and every
    /// answer given before may be another now.
    bool refresh() { return m_applications.refresh(); }

    /// Never null. The parent may be null; helpers of an application are known by it.
    std::shared_ptr<const Program> find(std::int32_t pid, const ProcessStat &stat,
                                        const Program *parent) const;

private:
    std::string applicationOf(std::int32_t pid, const Program &program, const Program *parent) const;

    const std::string m_procRoot;
    DesktopApplications m_applications;
};

} // namespace swabby
