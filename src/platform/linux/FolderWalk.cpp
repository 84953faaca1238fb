#include "platform/linux/FolderWalk.h"

#include <dirent.h>
#include <fcntl.h>
#include <linux/magic.h>
#include <linux/openat2.h>
#include <sys/stat.h>
#include <sys/syscall.h>
#include <sys/vfs.h>

#include <cerrno>
#include <cstring>
#include <optional>
#include <string_view>

namespace swabby {
namespace {

/// So many of the folders on the way down are held open; those above are found again from below.
constexpr std::size_t heldLevels = 4;

/// One folder on the way down.
struct Level {
    Descriptor folder;
    std::optional<Thing> itself{}; ///< when it is not held any more
    std::string waiting{};         ///< the names of the folders in it, each with a zero behind it
    std::size_t next = 0;
};

/// No value when it cannot be looked at.
std::optional<Thing> thingAt(int folder)
{
    struct statx facts = {};
    return look(folder, "", facts) ? std::optional(thingOf(facts)) : std::nullopt;
}

Descriptor openOnThisMount(int folder, const char *name)
{
    struct open_how how = {};
    how.flags = O_RDONLY | O_DIRECTORY | O_NOFOLLOW | O_CLOEXEC;
    how.resolve = RESOLVE_NO_XDEV;
    return Descriptor(static_cast<int>(::syscall(SYS_openat2, folder, name, &how, sizeof how)));
}

/// Whether the folder is on a disk of this computer: what waits for another one cannot be ended.
bool isLocal(int folder)
{
    struct statfs disk = {};
    if (::fstatfs(folder, &disk) != 0)
        return false;
    switch (disk.f_type) {
    case EXT4_SUPER_MAGIC: // and those before it
    case XFS_SUPER_MAGIC:
    case BTRFS_SUPER_MAGIC:
    case F2FS_SUPER_MAGIC:
    case TMPFS_MAGIC:
    case OVERLAYFS_SUPER_MAGIC:
        return true;
    default:
        return false;
    }
}

/// Whether a folder that does not open is closed to this user, or none any more.
bool isPassedOver(int problem)
{
    return problem == EACCES || problem == ENOENT || problem == ENOTDIR || problem == ELOOP;
}

class FolderWalk {
public:
    FolderWalk(FolderVisitor &visitor, const std::function<bool()> &isStopped)
        : m_visitor(visitor), m_isStopped(isStopped)
    {
    }

    bool through(Descriptor top)
    {
        bool goesOn = isLocal(top.number()) && enter(std::move(top), "");
        while (goesOn && !m_levels.empty()) {
            Level &level = m_levels.back();
            goesOn = !m_isStopped() && (level.next == level.waiting.size() ? leave() : goDown(level));
        }
        return goesOn;
    }

private:
    bool goDown(Level &level)
    {
        const char *const name = &level.waiting[level.next];
        level.next += std::strlen(name) + 1;
        if (!m_visitor.goesInto(level.folder.number(), name))
            return true;
        Descriptor below = openOnThisMount(level.folder.number(), name);
        if (below.isOpen())
            return enter(std::move(below), name);
        if (!isPassedOver(errno))
            return false;
        m_visitor.cannotEnter(level.folder.number(), name);
        return true;
    }

    bool enter(Descriptor folder, const char *name)
    {
        m_visitor.enters(folder.number(), name);
        std::string waiting;
        if (!list(folder.number(), waiting))
            return false;
        m_levels.push_back({.folder = std::move(folder), .waiting = std::move(waiting)});
        if (m_levels.size() <= heldLevels)
            return true;
        Level &above = m_levels[m_levels.size() - heldLevels - 1];
        if (above.folder.isOpen())
            above.itself = thingAt(above.folder.number());
        above.folder.reset();
        return above.itself.has_value();
    }

    bool list(int folder, std::string &waiting)
    {
        for (;;) {
            const ssize_t size = ::getdents64(folder, m_entries.data(), m_entries.size());
            if (size <= 0)
                return size == 0 || errno == ENOENT;
            for (ssize_t at = 0; at < size;) {
                if (m_isStopped())
                    return false;
                const auto *entry = reinterpret_cast<const dirent64 *>(m_entries.data() + at);
                at += entry->d_reclen;
                const std::string_view name = entry->d_name;
                if (name != "." && name != ".." && m_visitor.wants(folder, entry->d_name, entry->d_type))
                    waiting.append(name).push_back('\0');
            }
        }
    }

    bool leave()
    {
        const Level done = std::move(m_levels.back());
        m_levels.pop_back();
        m_visitor.leaves();
        return m_levels.empty() || m_levels.back().folder.isOpen() || findAgain(done.folder.number());
    }

    /// The folder above one that was moved away meanwhile is another one.
    bool findAgain(int below)
    {
        Level &level = m_levels.back();
        level.folder = openOnThisMount(below, "..");
        return level.folder.isOpen() && thingAt(level.folder.number()) == level.itself;
    }

    FolderVisitor &m_visitor;
    const std::function<bool()> &m_isStopped;
    std::vector<char> m_entries = std::vector<char>(64 * 1024);
    std::vector<Level> m_levels;
};

} // namespace

bool walkThrough(Descriptor top, FolderVisitor &visitor, const std::function<bool()> &isStopped)
{
    return FolderWalk(visitor, isStopped).through(std::move(top));
}

Thing thingOf(const struct statx &facts)
{
    constexpr unsigned bitsOfMinor = 32;
    return {(std::uint64_t(facts.stx_dev_major) << bitsOfMinor) | facts.stx_dev_minor, facts.stx_ino};
}

bool look(int folder, const char *name, struct statx &facts)
{
    constexpr unsigned wanted = STATX_TYPE | STATX_NLINK | STATX_INO | STATX_BLOCKS;
    constexpr int flags = AT_SYMLINK_NOFOLLOW | AT_NO_AUTOMOUNT | AT_EMPTY_PATH;
    return ::statx(folder, name, flags, wanted, &facts) == 0;
}

} // namespace swabby
