#pragma once

#include <functional>
#include <optional>
#include <string>
#include <vector>

namespace swabby {

// What two tools would print on their standard output, found out without them. No value for arguments of
// another form and when a walk did not come to the end. Each blocks for the disk.

/// `du -sk PATH`
std::optional<std::string> diskUsageText(const std::vector<std::string> &arguments,
                                         const std::function<bool()> &isStopped);

/// `find PATH -maxdepth LEVELS -type d -name NAME -prune -print`, NAME without a pattern. The lines come in
/// the order of the disk, which the tool changes in folders of more than 10,000 entries.
std::optional<std::string> folderSearchText(const std::vector<std::string> &arguments,
                                            const std::function<bool()> &isStopped);

} // namespace swabby
