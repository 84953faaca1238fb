#pragma once

#include "platform/KernelCounters.h"

#include <span>
#include <string>
#include <vector>

namespace swabby {

struct Volume {
    VolumeCapacity capacity;
    bool isReadOnly = false;
};

/// The volumes that these paths lie on, as `df` counts: what the system keeps back for itself is neither free
/// nor used. Each stands once; one that cannot be asked is missing. Waits for a file system that is far away.
std::vector<Volume> volumesOf(std::span<const std::string> paths);

/// The one of which the largest share is used, named when there are others. One that nobody can fill counts
/// only where there is no other. Neutral when there is none.
VolumeCapacity fullestOf(std::vector<Volume> volumes);

} // namespace swabby
