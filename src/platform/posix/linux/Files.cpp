#include "platform/posix/RegularFile.h"
#include "platform/posix/RenameWithoutReplacing.h"
#include "platform/posix/WholeFile.h"

#include <cstdio>
#include <fcntl.h>
#include <unistd.h>

namespace swabby {

bool renameWithoutReplacing(int fromFolder, const char *from, int toFolder, const char *to)
{
    return ::renameat2(fromFolder, from, toFolder, to, RENAME_NOREPLACE) == 0;
}

void RegularFile::expectWholeReading() const
{
    ::posix_fadvise(m_file.number(), 0, 0, POSIX_FADV_SEQUENTIAL);
}

void keepContentOnDisk(int file)
{
    ::fdatasync(file);
}

} // namespace swabby
