#include "platform/linux/CacheFolder.h"

#include "platform/FolderListing.h"
#include "platform/linux/KernelFile.h"

#include <sys/stat.h>
#include <unistd.h>

#include <algorithm>
#include <array>

namespace swabby {
namespace {

namespace fs = std::filesystem;

/// Nobody keeps only caches anywhere in these: they are the system's, or everybody's.
constexpr std::array sharedFolders = {"/bin",   "/boot",   "/dev", "/etc", "/gnu",  "/lib",  "/lib32",
                                      "/lib64", "/libx32", "/nix", "/opt", "/proc", "/sbin", "/snap",
                                      "/srv",   "/sys",    "/tmp", "/usr", "/var"};

constexpr std::pair<const char *, const char *> userFolders[] = {
    {"DESKTOP", "Desktop"},   {"DOCUMENTS", "Documents"}, {"DOWNLOAD", "Downloads"},  {"MUSIC", "Music"},
    {"PICTURES", "Pictures"}, {"PUBLICSHARE", "Public"},  {"TEMPLATES", "Templates"}, {"VIDEOS", "Videos"},
};

/// Those with a person's files, the home folder first.
std::vector<fs::path> personalFolders(const UserFolders &folders)
{
    const fs::path &home = folders.home;
    std::vector<fs::path> personal = {home,
                                      folders.config,
                                      folders.data,
                                      folders.state,
                                      home / ".config",
                                      home / ".local/share",
                                      home / ".local/state"};
    const std::string named = fileText((folders.config / "user-dirs.dirs").native());
    for (const auto &[name, usual] : userFolders) {
        personal.push_back(home / usual);
        if (const fs::path folder = userFolderIn(named, name, home); !folder.empty())
            personal.push_back(folder);
    }
    return personal;
}

bool isCalledCache(const fs::path &path)
{
    std::string name = path.filename().native();
    std::transform(name.begin(), name.end(), name.begin(), [](char letter) {
        return letter >= 'A' && letter <= 'Z' ? letter + ('a' - 'A') : letter;
    });
    return name.find("cache") != std::string::npos;
}

bool isSomebodyElses(const fs::path &folder)
{
    struct stat facts = {};
    return ::stat(folder.c_str(), &facts) == 0 && facts.st_uid != ::geteuid();
}

bool isBelieved(const fs::path &said, const UserFolders &folders)
{
    const std::vector<fs::path> personal = personalFolders(folders);
    if (std::any_of(personal.begin(), personal.end(),
                    [&](const fs::path &other) { return isAtOrUnder(other, said); }))
        return false;
    // Where it will lead once that disk is there, nobody can tell.
    std::error_code problem;
    if (fs::is_symlink(said, problem) && !fs::exists(said, problem))
        return false;
    const fs::path folder = resolved(said);
    const fs::path home = resolved(folders.home);
    // The usual place needs no look at the others, whose disks may be slow to answer.
    if (isAtOrUnder(folder, home / ".cache"))
        return true;
    for (const fs::path &other : personal)
        if (const fs::path place = resolved(other);
            isAtOrUnder(place, folder) || (place != home && isAtOrUnder(folder, place)))
            return false;
    const bool isHidden = folder.lexically_relative(home).native().starts_with('.');
    const bool isShared = isUnder(folder, home)
                              ? !isHidden
                              : std::any_of(sharedFolders.begin(), sharedFolders.end(),
                                            [&](const char *shared) { return isAtOrUnder(folder, shared); });
    return !isShared && (isCalledCache(said) || isCalledCache(said.parent_path())) &&
           !isSomebodyElses(folder);
}

} // namespace

fs::path believedCacheFolder(const UserFolders &folders)
{
    for (const fs::path &said : {folders.cache, folders.home / ".cache"}) {
        const fs::path plain = (said / ".").lexically_normal().parent_path();
        if (isBelieved(plain, folders))
            return plain;
    }
    return {};
}

} // namespace swabby
