#include "platform/posix/HeldFolder.h"

#include <cerrno>
#include <climits>
#include <dirent.h>
#include <fcntl.h>
#include <string_view>
#include <sys/stat.h>

namespace swabby {
namespace {

/// The one path on which a held folder can be changed that may not be opened for reading.
std::string pathOfDescriptor(int number)
{
    return "/proc/self/fd/" + std::to_string(number);
}

} // namespace

Descriptor holdFolder(int folder, const std::string &name, Links links)
{
    const int flags = O_PATH | O_DIRECTORY | O_CLOEXEC | (links == Links::refuse ? O_NOFOLLOW : 0);
    return Descriptor(::openat(folder, name.c_str(), flags));
}

Descriptor holdFolder(const std::filesystem::path &path)
{
    return holdFolder(AT_FDCWD, path.native(), Links::follow);
}

Descriptor holdOwnFolder(int folder, const std::string &name, Missing missing)
{
    if (missing == Missing::make)
        ::mkdirat(folder, name.c_str(), S_IRWXU);
    Descriptor held = holdFolder(folder, name, Links::refuse);
    struct stat facts = {};
    if (!held.isOpen() || ::fstat(held.number(), &facts) != 0 || facts.st_uid != ::geteuid())
        return {};
    return held;
}

MadeFolders::MadeFolders(int start, const std::filesystem::path &relativePath, mode_t mode,
                         const Pleases &pleases)
{
    Descriptor here = holdFolder(start, ".", Links::refuse);
    for (const std::filesystem::path &part : relativePath) {
        if (!here.isOpen() || !pleases(here.number()))
            break;
        Descriptor next = holdFolder(here.number(), part.native(), Links::follow);
        if (!next.isOpen() && errno == ENOENT) {
            const bool isMade = ::mkdirat(here.number(), part.c_str(), mode) == 0;
            // Another program may have made it in between.
            if (isMade || errno == EEXIST)
                next = holdFolder(here.number(), part.native(), isMade ? Links::refuse : Links::follow);
            if (isMade)
                m_made.push_back({std::move(here), part.native()});
        }
        here = std::move(next);
    }
    if (here.isOpen() && pleases(here.number()))
        m_last = std::move(here);
    else
        undo();
}

void MadeFolders::undo()
{
    for (auto made = m_made.rbegin(); made != m_made.rend(); ++made)
        ::unlinkat(made->folder.number(), made->name.c_str(), AT_REMOVEDIR);
    m_made.clear();
    m_last.reset();
}

std::optional<FileIdentity> identityIn(int folder, const std::string &name)
{
    return name.empty() ? std::nullopt : FileIdentity::in(folder, name.c_str());
}

std::optional<FileIdentity> identityOf(int descriptor)
{
    return descriptor < 0 ? std::nullopt : FileIdentity::in(descriptor, "");
}

std::uint64_t mountOf(int folder, const std::string &name)
{
    struct statx more = {};
    const int flags = AT_SYMLINK_NOFOLLOW | AT_NO_AUTOMOUNT | AT_EMPTY_PATH;
    if (::statx(folder, name.c_str(), flags, STATX_MNT_ID, &more) == 0 && (more.stx_mask & STATX_MNT_ID))
        return more.stx_mnt_id;
    const auto identity = name.empty() ? identityOf(folder) : identityIn(folder, name);
    return identity ? identity->device : 0;
}

bool liesAtOrUnder(int folder, const FileIdentity &above)
{
    Descriptor here = holdFolder(folder, ".", Links::refuse);
    for (auto identity = identityOf(here.number()); identity; identity = identityOf(here.number())) {
        if (identity->isSameThing(above))
            return true;
        Descriptor parent = holdFolder(here.number(), "..", Links::refuse);
        const auto next = identityOf(parent.number());
        if (next && next->isSameThing(*identity) && mountOf(parent.number()) == mountOf(here.number()))
            return false;
        here = std::move(parent);
    }
    return false;
}

bool canBeListed(int folder)
{
    return ::faccessat(folder, ".", R_OK | X_OK, AT_EACCESS) == 0;
}

std::vector<std::string> namesIn(int folder)
{
    std::vector<std::string> names;
    const int own = ::openat(folder, ".", O_RDONLY | O_DIRECTORY | O_CLOEXEC);
    DIR *listing = own < 0 ? nullptr : ::fdopendir(own);
    if (!listing) {
        const Descriptor closed(own);
        return names;
    }
    while (const dirent *entry = ::readdir(listing)) {
        const std::string_view name = entry->d_name;
        if (name != "." && name != "..")
            names.emplace_back(name);
    }
    ::closedir(listing);
    return names;
}

std::vector<ListedEntry> entriesIn(int folder)
{
    std::vector<ListedEntry> entries;
    for (std::string &name : namesIn(folder))
        if (const auto identity = identityIn(folder, name))
            entries.push_back({std::move(name), *identity});
    return entries;
}

std::filesystem::path pathOf(int folder)
{
    std::string target(PATH_MAX, '\0');
    const ssize_t length = ::readlink(pathOfDescriptor(folder).c_str(), target.data(), target.size());
    target.resize(length > 0 ? static_cast<std::size_t>(length) : 0);
    // A folder that is gone, or has no path here, is told of by a text that is no path to it.
    const auto there = target.empty() ? std::nullopt : FileIdentity::of(target);
    const auto here = identityOf(folder);
    return there && here && there->isSameThing(*here) ? std::filesystem::path(target)
                                                      : std::filesystem::path();
}

std::optional<mode_t> unlockOwnFolder(int folder)
{
    struct stat facts = {};
    if (::fstat(folder, &facts) != 0 || facts.st_uid != ::geteuid() || (facts.st_mode & S_IRWXU) == S_IRWXU)
        return std::nullopt;
    const mode_t before = facts.st_mode & 07777;
    if (::chmod(pathOfDescriptor(folder).c_str(), before | S_IRWXU) != 0)
        return std::nullopt;
    return before;
}

void setRights(int folder, mode_t mode)
{
    ::chmod(pathOfDescriptor(folder).c_str(), mode);
}

} // namespace swabby
