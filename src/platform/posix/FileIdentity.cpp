#include "platform/posix/FileFacts.h"

#include <fcntl.h>
#include <sys/stat.h>

namespace swabby {

FileKind kindOfMode(unsigned mode)
{
    if (S_ISREG(mode))
        return FileKind::file;
    if (S_ISDIR(mode))
        return FileKind::folder;
    return S_ISLNK(mode) ? FileKind::link : FileKind::other;
}

std::optional<FileIdentity> FileIdentity::of(const std::filesystem::path &path)
{
    return path.empty() ? std::nullopt : in(AT_FDCWD, path.c_str());
}

std::optional<FileIdentity> FileIdentity::in(int folder, const char *name)
{
    const auto facts = factsOf(folder, name);
    return facts ? std::optional(facts->identity) : std::nullopt;
}

bool FileIdentity::isSameEntry(const FileIdentity &other) const
{
    const bool isSameBirth =
        bornNanoseconds == other.bornNanoseconds || bornNanoseconds == 0 || other.bornNanoseconds == 0;
    return device == other.device && inode == other.inode && kind == other.kind && isSameBirth;
}

bool FileIdentity::isSameThing(const FileIdentity &other) const
{
    const bool isSameContent = size == other.size && modifiedNanoseconds == other.modifiedNanoseconds;
    return isSameEntry(other) && (kind == FileKind::folder || isSameContent);
}

bool FileIdentity::isUntouched(const FileIdentity &other) const
{
    const bool isSameList =
        modifiedNanoseconds == other.modifiedNanoseconds && changedNanoseconds == other.changedNanoseconds;
    return isSameThing(other) && (kind != FileKind::folder || isSameList);
}

} // namespace swabby
