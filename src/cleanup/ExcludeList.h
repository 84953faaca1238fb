#pragma once

#include "platform/posix/PathWay.h"

#include <QtCore/QString>

#include <filesystem>
#include <memory>
#include <set>
#include <vector>

namespace swabby {

/// The paths a person never wants removed. What lies at or under one of them is never offered nor removed,
/// nor is a folder that contains one. Paths are compared by their parts and by what they are, so that a link,
/// a mount and, on a disk that does not mind, another spelling lead to the same place.
class ExcludeList {
public:
    ExcludeList() = default;
    explicit ExcludeList(const std::vector<std::filesystem::path> &paths);
    /// Covers everything: what has to stay cannot be told, for that reason.
    static ExcludeList everything(const QString &problem);

    bool isEmpty() const { return m_paths.empty() && m_problem.isEmpty(); }
    /// Why everything has to stay; else empty.
    const QString &problem() const { return m_problem; }
    /// Whether the path has to stay. Looks at the disk.
    bool covers(const std::filesystem::path &path) const;

private:
    void add(const std::filesystem::path &path);

    QString m_problem;
    std::vector<std::filesystem::path> m_paths;
    std::vector<std::filesystem::path> m_foldedPaths; ///< of those that have other spellings
    std::set<Thing> m_things;                         ///< what is at the paths
    std::set<Thing> m_above;                          ///< the folders that contain them
    /// Some disks number a file anew each time somebody looks, unless somebody holds it.
    std::vector<std::shared_ptr<const Descriptor>> m_held;
};

} // namespace swabby
