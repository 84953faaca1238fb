#pragma once

#include "platform/posix/RegularFile.h"

#include <filesystem>
#include <functional>
#include <memory>
#include <optional>

namespace swabby {

/// A folder that stays the same one while it is open, whatever its path leads to meanwhile.
class OpenFolder {
public:
    /// Follows a link at the end of the path. No value when it is no folder or may not be listed.
    static std::optional<OpenFolder> open(const std::filesystem::path &path);

    /// Calls visit with each regular file's name and identity, in the system's order, until that returns
    /// false. Links, folders, pipes, sockets and devices are left out. Once for each object.
    void forEachFile(const std::function<bool(const char *name, const FileIdentity &identity)> &visit) const;
    /// No value when there is no regular file of that name or it may not be read.
    std::optional<RegularFile> openFile(const char *name) const;

private:
    struct Listing;
    explicit OpenFolder(std::shared_ptr<const Listing> listing) : m_listing(std::move(listing)) {}

    std::shared_ptr<const Listing> m_listing;
};

} // namespace swabby
