#include "platform/FolderListing.h"

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

} // namespace swabby
