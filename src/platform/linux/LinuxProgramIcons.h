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
    std::mutex m_mutex; ///< windows of two engines may ask at once
    DesktopApplications m_applications;
    IconThemes m_themes;
};

} // namespace swabby
