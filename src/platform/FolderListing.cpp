#include "platform/FolderListing.h"

#include <algorithm>

namespace swabby {

std::vector<std::filesystem::path> childrenOf(const std::filesystem::path &folder)
{
    std::vector<std::filesystem::path> children;
    std::error_code problem;
    std::filesystem::directory_iterator child(folder, problem);
    for (; !problem && child != std::filesystem::directory_iterator(); child.increment(problem))
        children.push_back(child->path());
    return children;
}

bool isUnder(const std::filesystem::path &path, const std::filesystem::path &folder)
{
    const auto [atFolder, atPath] = std::mismatch(folder.begin(), folder.end(), path.begin(), path.end());
    return atFolder == folder.end() && atPath != path.end();
}

bool isAtOrUnder(const std::filesystem::path &path, const std::filesystem::path &folder)
{
    return std::mismatch(folder.begin(), folder.end(), path.begin(), path.end()).first == folder.end();
}

} // namespace swabby
