#include "platform/posix/RegularFile.h"
#include "platform/posix/RenameWithoutReplacing.h"
#include "platform/posix/WholeFile.h"

#include <cerrno>
#include <cstdio>
#include <fcntl.h>
#include <unistd.h>

namespace swabby {

bool renameWithoutReplacing(int fromFolder, const char *from, int toFolder, const char *to)
{
    if (::renameatx_np(fromFolder, from, toFolder, to, RENAME_EXCL) == 0)
        return true;
    if (errno == ENOTSUP)
        errno = EINVAL;
    return false;
}

void RegularFile::expectWholeReading() const
{
    ::fcntl(m_file.number(), F_RDAHEAD, 1);
}

void keepContentOnDisk(int file)
{
    ::fsync(file);
}

} // namespace swabby
