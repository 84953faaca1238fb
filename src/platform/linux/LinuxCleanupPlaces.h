#pragma once

#include "platform/CleanupPlaces.h"

#include <string_view>

namespace swabby {

/// The user's folders as the XDG variables name them.
struct UserFolders {
    std::filesystem::path home;
    std::filesystem::path cache; ///< empty when none can be believed to hold caches only
    std::filesystem::path config;
    std::filesystem::path data;
    std::filesystem::path state;
    // Where these tools are told to keep what is theirs; empty for the usual place.
    std::filesystem::path cargo{};
    std::filesystem::path gradle{};
};

/// Where this system keeps what piles up. Reads the desktop's names for Downloads and Desktop. A folder
/// that is the home folder, or holds it, is never one of them: the usual name is taken instead.
CleanupPlaces linuxCleanupPlaces(const UserFolders &folders);

/// The path with every link followed, as far as it is there, and without a slash at its end.
std::filesystem::path resolved(const std::filesystem::path &path);

/// The folder that the text of user-dirs.dirs gives for a name such as "DOWNLOAD"; empty when it gives none
/// that can be used.
std::filesystem::path userFolderIn(std::string_view text, std::string_view name,
                                   const std::filesystem::path &home);

} // namespace swabby
