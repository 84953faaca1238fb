#pragma once

#include "platform/ProgramIcons.h"
#include "platform/linux/DesktopApplications.h"
#include "platform/linux/IconThemes.h"

#include <mutex>

namespace swabby {

/// The icons that desktop entries name.
class LinuxProgramIcons final : public ProgramIcons {
public:
    LinuxProgramIcons(DesktopApplications applications, IconThemes::Folders folders)
        : m_applications(std::move(applications)), m_themes(std::move(folders))
    {
    }

    QByteArray picture(const IconOwner &owner, const IconRequest &request) override;

private:
    /// The file, by its path; empty when there is none.
    std::string find(const IconOwner &owner, const IconRequest &request);

    std::mutex m_mutex; ///< several may ask at once
    DesktopApplications m_applications;
    IconThemes m_themes;
};

} // namespace swabby
