#include "platform/posix/OpenFolder.h"

#include "platform/posix/HeldFolder.h"

#include <dirent.h>
#include <fcntl.h>
#include <unistd.h>

namespace swabby {

struct OpenFolder::Listing {
    explicit Listing(DIR *opened) : entries(opened), descriptor(::dirfd(opened)) {}
    Listing(const Listing &) = delete;
    Listing &operator=(const Listing &) = delete;
    ~Listing() { ::closedir(entries); }

    DIR *entries;
    int descriptor;
};

std::optional<OpenFolder> OpenFolder::open(const std::filesystem::path &path)
{
    const int descriptor = ::open(path.c_str(), O_RDONLY | O_DIRECTORY | O_NONBLOCK | O_CLOEXEC);
    if (descriptor < 0)
        return std::nullopt;
    if (DIR *listing = ::fdopendir(descriptor))
        return OpenFolder(std::make_shared<Listing>(listing));
    ::close(descriptor);
    return std::nullopt;
}

void OpenFolder::forEachName(const std::function<bool(const char *)> &visit) const
{
    while (const dirent *entry = ::readdir(m_listing->entries))
        if ((entry->d_type == DT_REG || entry->d_type == DT_UNKNOWN) && !visit(entry->d_name))
            return;
}

std::optional<FileIdentity> OpenFolder::identityOf(const char *name) const
{
    return identityIn(m_listing->descriptor, name);
}

std::optional<RegularFile> OpenFolder::openFile(const char *name) const
{
    return RegularFile::openIn(m_listing->descriptor, name);
}

} // namespace swabby
