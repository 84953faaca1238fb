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

    /// Calls visit with each name that may be a regular file's, in the system's order, until that returns
    /// false. Once for each object.
    void forEachName(const std::function<bool(const char *name)> &visit) const;
    /// What the name leads to, links not followed. From any thread; no value when it is gone.
    std::optional<FileIdentity> identityOf(const char *name) const;
    /// Opens what was a regular file a moment ago. From any thread; no value when it is none any more or may
    /// not be read.
    std::optional<RegularFile> openFile(const char *name) const;

private:
    struct Listing;
    explicit OpenFolder(std::shared_ptr<const Listing> listing) : m_listing(std::move(listing)) {}

    std::shared_ptr<const Listing> m_listing;
};

} // namespace swabby
