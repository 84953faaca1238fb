#include "platform/linux/DiskTools.h"

#include "platform/TextScan.h"
#include "platform/linux/FolderWalk.h"

#include <dirent.h>
#include <fcntl.h>
#include <linux/magic.h>
#include <sys/stat.h>
#include <sys/vfs.h>

#include <unordered_set>

namespace swabby {
namespace {

struct Scatter {
    std::size_t operator()(const Thing &file) const { return file.second ^ (file.first << 48U); }
};

class Sizing final : public FolderVisitor {
public:
    void count(const struct statx &facts)
    {
        if (facts.stx_nlink == 1 || S_ISDIR(facts.stx_mode) || m_counted.insert(thingOf(facts)).second)
            m_blocks += facts.stx_blocks;
    }
    std::uint64_t kibibytes() const { return m_blocks / 2 + m_blocks % 2; }

    void enters(int folder, const char * /*name*/) override { countIfThere(folder, ""); }
    bool wants(int folder, const char *name, unsigned char kind) override
    {
        struct statx facts = {};
        if (kind == DT_DIR)
            return true; // looked at as soon as it is open
        if (!look(folder, name, facts))
            return false;
        if (!S_ISDIR(facts.stx_mode))
            count(facts);
        return S_ISDIR(facts.stx_mode);
    }
    bool goesInto(int /*folder*/, const char * /*name*/) override { return true; }
    void cannotEnter(int folder, const char *name) override { countIfThere(folder, name); }
    void leaves() override {}

private:
    void countIfThere(int folder, const char *name)
    {
        struct statx facts = {};
        if (look(folder, name, facts))
            count(facts);
    }

    std::uint64_t m_blocks = 0;                   ///< of 512 bytes
    std::unordered_set<Thing, Scatter> m_counted; ///< of those with several names
};

/// Whether a folder's count of names is to be trusted on its disk, which says 1 where it does not keep one.
bool countsFolders(int folder)
{
    struct statfs disk = {};
    return ::fstatfs(folder, &disk) == 0 &&
           (disk.f_type == EXT4_SUPER_MAGIC || disk.f_type == TMPFS_MAGIC || disk.f_type == XFS_SUPER_MAGIC);
}

class Searching final : public FolderVisitor {
public:
    Searching(std::string path, std::string name, std::size_t levels)
        : m_path(std::move(path)), m_name(std::move(name)), m_levels(levels)
    {
    }
    std::string text;

    void enters(int folder, const char *name) override
    {
        if (struct statx facts = {}; m_ends.empty() && countsFolders(folder) && look(folder, "", facts))
            m_countingDisk = thingOf(facts).first;
        m_ends.push_back(m_path.size());
        if (*name != '\0')
            m_path.append("/").append(name);
    }
    bool wants(int folder, const char *name, unsigned char kind) override
    {
        struct statx facts = {};
        const bool isFolder =
            kind == DT_UNKNOWN ? look(folder, name, facts) && S_ISDIR(facts.stx_mode) : kind == DT_DIR;
        return isFolder && (m_ends.size() < m_levels || name == m_name);
    }
    bool goesInto(int folder, const char *name) override
    {
        if (name != m_name)
            return !isKnownToHoldNone(folder, name);
        text.append(m_path).append("/").append(name).append("\n");
        return false;
    }
    void cannotEnter(int /*folder*/, const char * /*name*/) override {}
    void leaves() override
    {
        m_path.resize(m_ends.back());
        m_ends.pop_back();
    }

private:
    /// Each folder has its name, its own "." and the ".." of every folder in it. What is mounted there may
    /// count otherwise.
    bool isKnownToHoldNone(int folder, const char *name) const
    {
        struct statx facts = {};
        return m_countingDisk && look(folder, name, facts) && facts.stx_nlink == 2 &&
               thingOf(facts).first == *m_countingDisk;
    }

    std::string m_path;
    const std::string m_name;
    const std::size_t m_levels;
    std::optional<std::uint64_t> m_countingDisk;
    std::vector<std::size_t> m_ends; ///< of the path of what each folder on the way lies in
};

Descriptor openFolder(const std::string &path)
{
    return Descriptor(::open(path.c_str(), O_RDONLY | O_DIRECTORY | O_NOFOLLOW | O_CLOEXEC));
}

} // namespace

std::optional<std::string> diskUsageText(const std::vector<std::string> &arguments,
                                         const std::function<bool()> &isStopped)
{
    if (arguments.size() != 2 || arguments[0] != "-sk" || !arguments[1].starts_with('/'))
        return std::nullopt;
    const std::string &path = arguments[1];
    struct statx facts = {};
    if (!look(AT_FDCWD, path.c_str(), facts))
        return std::nullopt;
    Sizing sizing;
    if (!S_ISDIR(facts.stx_mode))
        sizing.count(facts);
    else if (Descriptor top = openFolder(path);
             !top.isOpen() || !walkThrough(std::move(top), sizing, isStopped))
        return std::nullopt;
    return std::to_string(sizing.kibibytes()) + '\t' + path + '\n';
}

std::optional<std::string> folderSearchText(const std::vector<std::string> &arguments,
                                            const std::function<bool()> &isStopped)
{
    constexpr std::size_t levelsAt = 2, nameAt = 6;
    std::vector<std::string> form = {"", "-maxdepth", "", "-type", "d", "-name", "", "-prune", "-print"};
    if (arguments.size() != form.size())
        return std::nullopt;
    for (const std::size_t free : {std::size_t(0), levelsAt, nameAt})
        form[free] = arguments[free];
    const std::string &path = arguments[0];
    const std::string &name = arguments[nameAt];
    const auto levels = integerOf<std::size_t>(arguments[levelsAt]);
    if (arguments != form || !levels || *levels == 0 || !path.starts_with('/') || path.ends_with('/') ||
        path.ends_with('/' + name) || name.find_first_of("*?[\\") != std::string::npos)
        return std::nullopt;
    Searching searching(path, name, *levels);
    Descriptor top = openFolder(path);
    if (!top.isOpen() || !walkThrough(std::move(top), searching, isStopped))
        return std::nullopt;
    return searching.text;
}

} // namespace swabby
