#pragma once

#include "platform/ApplicationSource.h"
#include "platform/linux/DesktopEntry.h"
#include "platform/linux/LinuxCleanupPlaces.h"
#include "platform/linux/ProgramFolders.h"

#include <optional>

namespace swabby {

/// The applications that the user installed in the home folder: those on the user's own part of the menu
/// whose program lies there, and application images. What the system's packages installed is theirs.
class LinuxApplicationSource final : public ApplicationSource {
public:
    LinuxApplicationSource(UserFolders folders, ProgramFolders programs, QString ownId)
        : m_folders(std::move(folders)), m_programs(std::move(programs)), m_ownId(std::move(ownId))
    {
    }

    std::vector<FoundApplication> applications() override;
    std::vector<LeftoverPlace> leftoverPlaces(const QString &name, const QString &bundleId) const override;

    struct Started {
        FoundApplication application;
        std::filesystem::path program; ///< what runs while the application does
        std::size_t words = 1;         ///< of the command that starts it
    };
    /// The same applications with their programs.
    std::vector<Started> startedApplications() const;

private:
    std::optional<Started> fromEntry(const std::string &id, const DesktopEntry &entry) const;
    void addImages(const std::filesystem::path &folder, std::vector<Started> &found) const;

    const UserFolders m_folders;
    const ProgramFolders m_programs;
    const QString m_ownId;
};

} // namespace swabby
