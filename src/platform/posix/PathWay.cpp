#include "platform/posix/PathWay.h"

#include "platform/FileIdentity.h"

#include <fcntl.h>

#include <string>

namespace swabby {

PathWay PathWay::to(const std::filesystem::path &path)
{
    PathWay way;
    std::string upTo = path.native();
    for (std::size_t slash = upTo.find('/', 1); slash != std::string::npos;
         slash = upTo.find('/', slash + 1)) {
        upTo[slash] = '\0';
        const auto found = FileIdentity::in(AT_FDCWD, upTo.c_str());
        if (!found)
            return way;
        upTo[slash] = '/';
        way.above.emplace_back(found->device, found->inode);
        way.hasLink = way.hasLink || found->kind == FileKind::link;
    }
    if (const auto found = FileIdentity::of(path))
        way.itself.emplace(found->device, found->inode);
    return way;
}

} // namespace swabby
