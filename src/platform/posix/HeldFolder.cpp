#include "platform/posix/HeldFolder.h"

#include "platform/posix/FileFacts.h"

#include <cerrno>
#include <dirent.h>
#include <fcntl.h>
#include <string_view>
#include <sys/stat.h>

namespace swabby {

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
    const auto facts = factsOf(folder, name.c_str());
    return facts ? facts->mount : 0;
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

bool isKeptClosed(const std::filesystem::path &folder)
{
    errno = 0;
    const Descriptor held = holdFolder(AT_FDCWD, folder.native(), Links::refuse);
    return !(held.isOpen() && canBeListed(held.number())) && (errno == EPERM || errno == EACCES);
}

std::filesystem::path pathOf(int folder)
{
    const std::string target = toldPathOf(folder);
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
    if (!setRights(folder, before | S_IRWXU))
        return std::nullopt;
    return before;
}

} // namespace swabby
