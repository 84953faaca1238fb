#pragma once

#include "platform/FileIdentity.h"

namespace swabby {

/// What one look at a file tells. Each system has its own way to look.
struct FileFacts {
    FileIdentity identity;
    /// Tells mounted file systems apart, where the system can also two views of the same disk.
    std::uint64_t mount = 0;
};

/// Of a name in an open folder, links not followed; of what is open itself when the name is empty. No value
/// when nothing is there or it cannot be looked at.
std::optional<FileFacts> factsOf(int folder, const char *name);

/// What a system's mode says of the kind.
FileKind kindOfMode(unsigned mode);

} // namespace swabby
