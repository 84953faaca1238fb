#include "platform/posix/RegularFile.h"

#include "platform/posix/HeldFolder.h"

#include <cerrno>
#include <fcntl.h>
#include <unistd.h>

namespace swabby {

std::optional<RegularFile> RegularFile::open(const std::filesystem::path &path)
{
    // Merely opening some devices does something, so it is looked at first.
    const auto found = FileIdentity::of(path);
    return found && found->kind == FileKind::file ? openIn(AT_FDCWD, path.c_str()) : std::nullopt;
}

std::optional<RegularFile> RegularFile::openIn(int folder, const char *name)
{
    // Should a pipe have taken its place meanwhile, opening it does not wait.
    Descriptor file(::openat(folder, name, O_RDONLY | O_NOFOLLOW | O_NONBLOCK | O_CLOEXEC | O_NOCTTY));
    if (!file.isOpen())
        return std::nullopt;
    const auto identity = identityOf(file.number());
    if (!identity || identity->kind != FileKind::file)
        return std::nullopt;
    return RegularFile(std::move(file), *identity);
}

bool RegularFile::readAt(std::int64_t offset, char *buffer, std::size_t size) const
{
    while (size > 0) {
        const ssize_t got = ::pread(m_file.number(), buffer, size, offset);
        if (got < 0 && errno == EINTR)
            continue;
        if (got <= 0)
            return false;
        offset += got;
        buffer += got;
        size -= static_cast<std::size_t>(got);
    }
    return true;
}

bool RegularFile::hasChanged() const
{
    const auto now = identityOf(m_file.number());
    return !now || !now->isSameThing(m_identity) || now->changedNanoseconds != m_identity.changedNanoseconds;
}

} // namespace swabby
