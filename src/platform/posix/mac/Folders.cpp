#include "platform/FolderListing.h"
#include "platform/posix/HeldFolder.h"
#include "platform/posix/MountTable.h"
#include "platform/posix/PathWay.h"

#include <cerrno>
#include <climits>
#include <cstring>
#include <fcntl.h>
#include <sys/stat.h>

namespace swabby {
namespace {

/// The disk with everything but the system; its folders are seen in the system's too.
constexpr auto dataVolume = "/System/Volumes/Data";

/// Opening asks a Mac for rights that holding does not need: the user's own folder lends them for that
/// moment.
Descriptor holdLocked(int folder, const std::string &name, int flags)
{
    struct stat facts = {};
    if (::fstatat(folder, name.c_str(), &facts, AT_SYMLINK_NOFOLLOW) != 0 || !S_ISDIR(facts.st_mode) ||
        facts.st_uid != ::geteuid() || ::fchmodat(folder, name.c_str(), S_IRWXU, AT_SYMLINK_NOFOLLOW) != 0)
        return {};
    Descriptor held(::openat(folder, name.c_str(), flags));
    ::fchmodat(folder, name.c_str(), facts.st_mode & 07777, AT_SYMLINK_NOFOLLOW);
    return held;
}

} // namespace

Descriptor holdFolder(int folder, const std::string &name, Links links)
{
    const int flags = O_DIRECTORY | O_CLOEXEC | (links == Links::refuse ? O_NOFOLLOW : 0);
    Descriptor held(::openat(folder, name.c_str(), O_SEARCH | flags));
    if (!held.isOpen() && errno == EACCES && links == Links::refuse)
        return holdLocked(folder, name, O_SEARCH | flags);
    return held;
}

Descriptor holdEntry(const std::filesystem::path &path)
{
    return Descriptor(::open(path.c_str(), O_EVTONLY | O_SYMLINK | O_NONBLOCK | O_CLOEXEC));
}

std::string toldPathOf(int folder)
{
    std::string path(PATH_MAX, '\0');
    if (::fcntl(folder, F_GETPATH, path.data()) != 0)
        return {};
    path.resize(std::strlen(path.c_str()));
    return path;
}

bool setRights(int folder, mode_t mode)
{
    return ::fchmod(folder, mode) == 0;
}

bool canBeListed(int folder)
{
    // A folder that macOS keeps closed has all its rights and still does not open.
    return ::faccessat(folder, ".", R_OK | X_OK, AT_EACCESS) == 0 &&
           Descriptor(::openat(folder, ".", O_RDONLY | O_DIRECTORY | O_CLOEXEC)).isOpen();
}

std::vector<std::filesystem::path> otherWaysTo(const std::filesystem::path &path)
{
    if (isAtOrUnder(path, dataVolume))
        return {"/" / path.lexically_relative(dataVolume).lexically_normal()};
    return {dataVolume / path.relative_path()};
}

} // namespace swabby
