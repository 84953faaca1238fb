#include "platform/posix/PathWay.h"

#include <fcntl.h>
#include <sys/stat.h>

#include <string>

namespace swabby {

PathWay PathWay::to(const std::filesystem::path &path)
{
    PathWay way;
    std::string upTo = path.native();
    struct stat facts = {};
    for (std::size_t slash = upTo.find('/', 1); slash != std::string::npos;
         slash = upTo.find('/', slash + 1)) {
        upTo[slash] = '\0';
        if (::lstat(upTo.c_str(), &facts) != 0)
            return way;
        upTo[slash] = '/';
        way.above.emplace_back(facts.st_dev, facts.st_ino);
        way.hasLink = way.hasLink || S_ISLNK(facts.st_mode);
    }
    if (::lstat(upTo.c_str(), &facts) == 0)
        way.itself.emplace(facts.st_dev, facts.st_ino);
    return way;
}

Descriptor holdEntry(const std::filesystem::path &path)
{
    return Descriptor(::open(path.c_str(), O_PATH | O_NOFOLLOW | O_CLOEXEC));
}

} // namespace swabby
