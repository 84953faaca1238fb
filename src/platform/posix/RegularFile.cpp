#include "platform/posix/RegularFile.h"

#include <cerrno>
#include <fcntl.h>
#include <sys/stat.h>
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
    const auto facts = factsOf(file.number());
    if (!facts || facts->identity.kind != FileKind::file)
        return std::nullopt;
    return RegularFile(std::move(file), *facts);
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

void RegularFile::expectWholeReading() const
{
    ::posix_fadvise(m_file.number(), 0, 0, POSIX_FADV_SEQUENTIAL);
}

bool RegularFile::hasChanged() const
{
    const auto now = factsOf(m_file.number());
    return !now || !now->identity.isSameThing(m_facts.identity) ||
           now->changedNanoseconds != m_facts.changedNanoseconds;
}

std::optional<RegularFile::Facts> RegularFile::factsOf(int descriptor)
{
    constexpr std::int64_t nanoseconds = 1'000'000'000;
    struct stat facts = {};
    if (::fstat(descriptor, &facts) != 0)
        return std::nullopt;
    return Facts{FileIdentity::from(facts), facts.st_ctim.tv_sec * nanoseconds + facts.st_ctim.tv_nsec};
}

} // namespace swabby
