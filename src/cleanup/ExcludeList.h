#pragma once

#include <filesystem>
#include <vector>

namespace swabby {

/// The paths a person never wants removed. What lies at or under one of them is never offered nor removed,
/// nor is a folder that contains one. Paths are compared by their parts, as they stand and with their links
/// resolved, so that another way to the same place counts too.
class ExcludeList {
public:
    ExcludeList() = default;
    explicit ExcludeList(const std::vector<std::filesystem::path> &paths);

    bool isEmpty() const { return m_paths.empty(); }
    /// Whether the path has to stay. Looks at the disk to resolve links.
    bool covers(const std::filesystem::path &path) const;

private:
    std::vector<std::filesystem::path> m_paths;
};

} // namespace swabby
