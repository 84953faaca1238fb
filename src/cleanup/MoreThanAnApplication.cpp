#include "cleanup/MoreThanAnApplication.h"

#include "platform/FolderListing.h"

#include <algorithm>
#include <array>

namespace swabby {
namespace {

namespace fs = std::filesystem;

/// A folder with one of these is not an application's alone.
constexpr std::array telltales = {
    ".git",                      // somebody works here
    ".hg",                       // the same
    ".svn",                      // the same
    ".jj",                       // the same
    "steamapps",                 // every game that Steam installed
    "SteamApps",                 // the same, long ago
    "pga.db",                    // Lutris' list of games, with its runners and prefixes
    "GamesConfig",               // Heroic's games and their sign-ins
    "Prefixes/default",          // what Heroic's games see as their disk, with saved games
    ".egstore",                  // a game that a launcher keeps up to date
    "db/butler.db",              // itch's list of games, which lie beside it
    ".itch/receipt.json.gz",     // one of them
    "instances/instgroups.json", // worlds of a block game, one folder for each instance
};

/// Folders that people and launchers call so hold one game beside the other.
constexpr std::array gameFolders = {"Games", "games", "GOG Games"};

bool isPlainFolder(const fs::path &path)
{
    std::error_code problem;
    return fs::is_directory(fs::symlink_status(path, problem));
}

bool holdsTelltale(const fs::path &folder)
{
    return std::ranges::any_of(telltales, [&](const char *name) {
        std::error_code problem;
        return fs::exists(fs::symlink_status(folder / name, problem));
    });
}

bool holdsTelltale(const fs::path &folder, int levels)
{
    if (!isPlainFolder(folder))
        return false;
    if (holdsTelltale(folder))
        return true;
    return levels > 0 && std::ranges::any_of(childrenOf(folder), [&](const fs::path &child) {
               return holdsTelltale(child, levels - 1);
           });
}

} // namespace

bool isMoreThanAnApplication(const fs::path &path, const fs::path &home)
{
    constexpr int levels = 2;
    if (holdsTelltale(path, levels))
        return true;
    std::error_code problem;
    const fs::path top = fs::weakly_canonical(home, problem);
    for (fs::path folder = fs::weakly_canonical(path.parent_path(), problem);
         folder.has_relative_path() && isAtOrUnder(folder, top); folder = folder.parent_path())
        if (holdsTelltale(folder) ||
            (folder != top && std::ranges::count(gameFolders, folder.filename()) > 0))
            return true;
    return false;
}

} // namespace swabby
