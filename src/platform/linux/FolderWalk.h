#pragma once

#include "platform/posix/Descriptor.h"
#include "platform/posix/PathWay.h"

#include <cstdint>
#include <functional>
#include <string>
#include <vector>

struct statx;

namespace swabby {

/// Who is told of what a walk comes by. Every name is one in a folder that is open.
class FolderVisitor {
public:
    virtual ~FolderVisitor() = default;

    /// A folder was opened, the first of them the top; its entries come next.
    virtual void enters(int folder, const char *name) = 0;
    /// An entry, with what the listing says of its kind (DT_UNKNOWN where it says nothing). Whether it is a
    /// folder whose turn shall come when the whole of this one is listed.
    virtual bool wants(int folder, const char *name, unsigned char kind) = 0;
    /// Its turn has come, in the order of the listing: whether to enter it.
    virtual bool goesInto(int folder, const char *name) = 0;
    virtual void cannotEnter(int folder, const char *name) = 0;
    virtual void leaves() = 0;
};

/// Walks through everything below a folder, asked of the kernel itself. No link is followed, whatever is
/// swapped meanwhile, and depth costs neither stack nor descriptors. Blocks for the disk. False when it did
/// not come to the end: it was stopped, or the folder is on a disk that may not answer for good, as a
/// server's, or something else is mounted below, or this program lacks what it takes.
bool walkThrough(Descriptor top, FolderVisitor &visitor, const std::function<bool()> &isStopped);

/// Looks at a name in an open folder, or at that itself when the name is empty, links not followed: kind,
/// names, number and blocks.
bool look(int folder, const char *name, struct statx &facts);

/// What it is that was looked at.
Thing thingOf(const struct statx &facts);

} // namespace swabby
