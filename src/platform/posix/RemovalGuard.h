#pragma once

#include "platform/Disposal.h"
#include "platform/posix/Descriptor.h"

#include <string>

namespace swabby {

/// A name in a folder that is held open.
struct HeldEntry {
    Descriptor folder;
    std::string name;
};

/// The guard that every removal passes: the way from the allowed folder down to the target, folder by
/// folder, none of them a link, and at its end what was agreed on. The allowed folder itself may be reached
/// through links. No value when any of this fails, and for a path with empty, "." or ".." parts.
std::optional<HeldEntry> passGuard(const RemovalTarget &target);

/// The same for what goes to the Trash: a folder also stays when it has changed since it was found.
std::optional<HeldEntry> passTrashGuard(const RemovalTarget &target);

} // namespace swabby
