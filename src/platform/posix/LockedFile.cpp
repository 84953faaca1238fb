#include "platform/posix/LockedFile.h"

#include "platform/FileIdentity.h"

#include <cerrno>
#include <fcntl.h>
#include <sys/file.h>
#include <sys/stat.h>
#include <unistd.h>

namespace swabby {

Descriptor lockedFile(const std::filesystem::path &path, Turn turn)
{
    while (true) {
        const auto found = FileIdentity::of(path);
        // No pipe, device or link is written to; whatever it is was not ours.
        if (found && found->kind != FileKind::file && ::unlink(path.c_str()) != 0)
            return {};
        const int make = turn == Turn::shared ? O_CREAT : 0;
        Descriptor file(::open(path.c_str(),
                               O_RDWR | O_APPEND | O_NOFOLLOW | O_NONBLOCK | O_NOCTTY | O_CLOEXEC | make,
                               S_IRUSR | S_IWUSR));
        while (file.isOpen() && ::flock(file.number(), turn == Turn::shared ? LOCK_SH : LOCK_EX | LOCK_NB))
            if (errno == EWOULDBLOCK)
                return {};
            else if (errno != EINTR)
                break; // a disk that knows no locks
        struct stat facts = {};
        // Whoever had it alone may have taken it away or replaced it.
        if (::fstat(file.number(), &facts) != 0 || facts.st_nlink > 0)
            return file;
    }
}

} // namespace swabby
