#include "platform/linux/TrashFolder.h"

#include "platform/posix/HeldFolder.h"

#include <cerrno>
#include <fcntl.h>
#include <sys/stat.h>

namespace swabby {
namespace {

using Path = std::filesystem::path;

std::string userName()
{
    return std::to_string(::geteuid());
}

std::optional<TrashFolder> trashAt(const Path &path, Descriptor folder, const Path &topFolder,
                                   Missing missing)
{
    if (!folder.isOpen())
        return std::nullopt;
    TrashFolder trash = {path, topFolder, std::move(folder), {}, {}};
    trash.files = holdOwnFolder(trash.folder.number(), "files", missing);
    trash.info = holdOwnFolder(trash.folder.number(), "info", missing);
    if (!trash.files.isOpen() || !trash.info.isOpen())
        return std::nullopt;
    return trash;
}

/// The user's part of a Trash for everybody, which an administrator made: no link, and nobody can remove
/// what is another's.
Descriptor sharedTrash(int top, Missing missing)
{
    const Descriptor shared = holdFolder(top, ".Trash", Links::refuse);
    struct stat facts = {};
    if (!shared.isOpen() || ::fstat(shared.number(), &facts) != 0 || !(facts.st_mode & S_ISVTX))
        return {};
    return holdOwnFolder(shared.number(), userName(), missing);
}

Descriptor topOfMount(int folder)
{
    Descriptor top = holdFolder(folder, ".", Links::refuse);
    while (top.isOpen()) {
        Descriptor above = holdFolder(top.number(), "..", Links::refuse);
        const auto identity = identityOf(above.number());
        const auto below = identityOf(top.number());
        if (!identity || !below)
            return {};
        if (identity->isSameThing(*below) || mountOf(above.number()) != mountOf(top.number()))
            return top;
        top = std::move(above);
    }
    return top;
}

} // namespace

std::optional<TrashFolder> homeTrash(const Path &dataHome)
{
    const Descriptor root = holdFolder("/");
    const MadeFolders data(root.number(), dataHome.relative_path(), S_IRWXU, [](int) { return true; });
    Descriptor folder = holdOwnFolder(data.last().number(), "Trash", Missing::make);
    return trashAt(dataHome / "Trash", std::move(folder), {}, Missing::make);
}

std::optional<TrashFolder> trashOfMount(int folder)
{
    const Descriptor top = topOfMount(folder);
    const Path topFolder = pathOf(top.number());
    if (topFolder.empty())
        return std::nullopt;
    auto trash = trashAt(topFolder / ".Trash" / userName(), sharedTrash(top.number(), Missing::make),
                         topFolder, Missing::make);
    if (trash)
        return trash;
    const std::string name = ".Trash-" + userName();
    return trashAt(topFolder / name, holdOwnFolder(top.number(), name, Missing::make), topFolder,
                   Missing::make);
}

std::optional<TrashFolder> existingTrash(const Path &path, const Path &dataHome)
{
    const Path above = path.parent_path();
    const std::string name = path.filename().native();
    const Descriptor held = holdFolder(above);
    const auto found = identityIn(held.number(), name);
    const auto home = FileIdentity::of(dataHome / "Trash");
    if (found && home && found->isSameThing(*home))
        return trashAt(path, holdOwnFolder(held.number(), name, Missing::refuse), {}, Missing::refuse);
    if (name == ".Trash-" + userName())
        return trashAt(path, holdOwnFolder(held.number(), name, Missing::refuse), above, Missing::refuse);
    if (name != userName() || above.filename() != ".Trash")
        return std::nullopt;
    const Descriptor top = holdFolder(above.parent_path());
    return trashAt(path, sharedTrash(top.number(), Missing::refuse), above.parent_path(), Missing::refuse);
}

std::string recordIn(const TrashFolder &trash, const std::string &recordName)
{
    constexpr std::size_t largest = 64 * 1024;
    const Descriptor file(::openat(trash.info.number(), recordName.c_str(),
                                   O_RDONLY | O_NOFOLLOW | O_NONBLOCK | O_NOCTTY | O_CLOEXEC));
    std::string text(largest, '\0');
    const ssize_t length = ::pread(file.number(), text.data(), text.size(), 0);
    text.resize(length > 0 ? static_cast<std::size_t>(length) : 0);
    return text;
}

bool writeRecord(const TrashFolder &trash, const std::string &recordName, const std::string &text)
{
    const Descriptor file(::openat(trash.info.number(), recordName.c_str(),
                                   O_WRONLY | O_CREAT | O_EXCL | O_NOFOLLOW | O_CLOEXEC, S_IRUSR | S_IWUSR));
    if (!file.isOpen())
        return false;
    if (::write(file.number(), text.data(), text.size()) == static_cast<ssize_t>(text.size()))
        return true;
    ::unlinkat(trash.info.number(), recordName.c_str(), 0);
    errno = ENOSPC;
    return false;
}

} // namespace swabby
