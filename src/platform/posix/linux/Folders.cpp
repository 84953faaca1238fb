#include "platform/posix/HeldFolder.h"
#include "platform/posix/MountTable.h"
#include "platform/posix/PathWay.h"

#include <climits>
#include <fcntl.h>
#include <fstream>
#include <iterator>
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

Descriptor holdEntry(const std::filesystem::path &path)
{
    return Descriptor(::open(path.c_str(), O_PATH | O_NOFOLLOW | O_CLOEXEC));
}

std::string toldPathOf(int folder)
{
    std::string target(PATH_MAX, '\0');
    const ssize_t length = ::readlink(pathOfDescriptor(folder).c_str(), target.data(), target.size());
    target.resize(length > 0 ? static_cast<std::size_t>(length) : 0);
    return target;
}

bool setRights(int folder, mode_t mode)
{
    return ::chmod(pathOfDescriptor(folder).c_str(), mode) == 0;
}

bool canBeListed(int folder)
{
    return ::faccessat(folder, ".", R_OK | X_OK, AT_EACCESS) == 0;
}

std::vector<std::filesystem::path> otherWaysTo(const std::filesystem::path &path)
{
    std::ifstream file("/proc/self/mountinfo");
    return otherWaysTo(path, std::string(std::istreambuf_iterator(file), {}));
}

} // namespace swabby
