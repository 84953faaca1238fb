#pragma once

#include "platform/ApplicationSource.h"
#include "platform/linux/DesktopEntry.h"
#include "platform/linux/LinuxCleanupPlaces.h"
#include "platform/linux/ProgramFolders.h"

#include <optional>

namespace swabby {

/// The applications that the user installed in the home folder: those on the user's own part of the menu
/// whose program lies there, and application images. What the system's packages installed is theirs, and a
/// folder directly in home is the user's.
class LinuxApplicationSource final : public ApplicationSource {
public:
    /// What it takes to tell Swabby itself.
    struct Own {
        std::string id;                    ///< of its entry on the menu
        std::string name;                  ///< how the names of its files begin
        std::vector<std::string> programs; ///< what this run of it was started by
    };

    /// The entry folders are the user's own and everybody's.
    LinuxApplicationSource(UserFolders folders, ProgramFolders programs,
                           std::vector<std::string> entryFolders, Own own)
        : m_folders(std::move(folders)),
          m_programs(std::move(programs)),
          m_entryFolders(std::move(entryFolders)),
          m_own(std::move(own))
    {
    }

    std::vector<FoundApplication> applications() override;
    std::vector<LeftoverPlace> leftoverPlaces(const FoundApplication &application) const override;

    struct Started {
        FoundApplication application;
        std::filesystem::path program; ///< what runs while the application does
        std::size_t words = 1;         ///< of the command that starts it
    };
    /// The same applications with their programs.
    std::vector<Started> startedApplications() const;

private:
    std::optional<Started> fromEntry(const std::string &id, const DesktopEntry &entry) const;
    std::string programOf(const DesktopEntry &entry) const;
    void addImages(const std::filesystem::path &folder, std::vector<Started> &found) const;

    const UserFolders m_folders;
    const ProgramFolders m_programs;
    const std::vector<std::string> m_entryFolders;
    const Own m_own;
};

} // namespace swabby
