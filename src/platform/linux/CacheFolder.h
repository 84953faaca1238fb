#pragma once

#include "platform/linux/LinuxCleanupPlaces.h"

namespace swabby {

/// The folder that holds caches and nothing else: the one the variable names, else ~/.cache; empty when
/// neither can be believed. A folder is not believed when it is, holds or lies in one with a person's files,
/// with everybody's temporary ones or with the system's, when it is somebody else's, or when nothing calls it
/// a cache. Looks at the disk to resolve links.
std::filesystem::path believedCacheFolder(const UserFolders &folders);

} // namespace swabby
