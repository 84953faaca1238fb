#pragma once

#include "platform/ProgramOrigins.h"
#include "platform/Shell.h"
#include "platform/linux/DesktopApplications.h"

namespace swabby {

/// Reads /proc, and asks the records of the system's packages.
class LinuxProgramOrigins final : public ProgramOrigins {
public:
    LinuxProgramOrigins(std::string procRoot, DesktopApplications applications, Shell &shell)
        : m_procRoot(std::move(procRoot)), m_applications(std::move(applications)), m_shell(shell)
    {
    }

    ProgramOrigin ofProcess(std::int32_t pid) override;
    QString packageOf(const QString &file) override;

private:
    const std::string m_procRoot;
    const DesktopApplications m_applications; ///< not read yet: copied for each question, and let go
    Shell &m_shell;
};

} // namespace swabby
