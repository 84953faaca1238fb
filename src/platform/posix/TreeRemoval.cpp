#include "platform/posix/TreeRemoval.h"

#include "platform/posix/HeldFolder.h"

#include <cerrno>
#include <fcntl.h>
#include <sys/stat.h>

namespace swabby {
namespace {

/// So many of the folders on the way down are held open; those above are found again from below.
constexpr std::size_t heldLevels = 32;

/// One folder on the way down.
struct Level {
    std::string name;
    Descriptor folder;
    FileIdentity identity;
    std::vector<std::string> names; ///< what is left to do in it
    std::optional<mode_t> lockedMode;
    bool somethingStayed = false;
};

class TreeRemoval {
public:
    explicit TreeRemoval(int top) : m_top(top), m_mount(mountOf(top)) {}

    bool remove(const std::string &name, const std::optional<FileIdentity> &expected)
    {
        takeAway(name, expected);
        while (!m_levels.empty()) {
            std::vector<std::string> &names = m_levels.back().names;
            if (names.empty()) {
                leave();
                continue;
            }
            const std::string next = std::move(names.back());
            names.pop_back();
            takeAway(next, std::nullopt);
        }
        return !m_somethingStayed;
    }

private:
    int here() const { return m_levels.empty() ? m_top : m_levels.back().folder.number(); }
    void stays() { (m_levels.empty() ? m_somethingStayed : m_levels.back().somethingStayed) = true; }

    /// Unlinks a name, or goes down into it when it is a folder.
    void takeAway(const std::string &name, const std::optional<FileIdentity> &expected)
    {
        // Somebody may swap the two kinds as often as they like: then it stays.
        constexpr int attempts = 8;
        for (int attempt = 0; attempt < attempts; ++attempt) {
            if (expected) {
                const auto found = identityIn(here(), name);
                if (!found || !found->isSameThing(*expected))
                    return stays();
            }
            if (::unlinkat(here(), name.c_str(), 0) == 0 || (errno == ENOENT && !expected))
                return;
            // Some systems have another word for a folder than Linux.
            if (errno != EISDIR && errno != EPERM)
                return stays();
            if (enter(name, expected))
                return;
            if (errno != ENOTDIR && errno != ELOOP)
                return stays();
        }
        stays();
    }

    /// False, with ENOTDIR or ELOOP, when it is no folder after all.
    bool enter(const std::string &name, const std::optional<FileIdentity> &expected)
    {
        Level level = {name, holdFolder(here(), name, Links::refuse), {}, {}, std::nullopt};
        if (!level.folder.isOpen())
            return false;
        const auto identity = identityOf(level.folder.number());
        const bool isAnother = identity && expected && !identity->isSameThing(*expected);
        if (!identity || isAnother || mountOf(level.folder.number()) != m_mount) {
            errno = EXDEV;
            return false;
        }
        level.identity = *identity;
        level.lockedMode = unlockOwnFolder(level.folder.number());
        level.names = namesIn(level.folder.number());
        m_levels.push_back(std::move(level));
        if (m_levels.size() > heldLevels)
            m_levels[m_levels.size() - heldLevels - 1].folder.reset();
        return true;
    }

    /// Goes up again and unlinks the folder that was left.
    void leave()
    {
        const Level done = std::move(m_levels.back());
        m_levels.pop_back();
        if (!m_levels.empty() && !m_levels.back().folder.isOpen() && !findAgain(done.folder.number())) {
            m_levels.clear();
            m_somethingStayed = true;
            return;
        }
        if (!done.somethingStayed && ::unlinkat(here(), done.name.c_str(), AT_REMOVEDIR) == 0)
            return;
        if (done.lockedMode)
            setRights(done.folder.number(), *done.lockedMode);
        stays();
    }

    /// The folder above one that was moved away meanwhile is not the one that was agreed on.
    bool findAgain(int below)
    {
        Level &level = m_levels.back();
        level.folder = holdFolder(below, "..", Links::refuse);
        const auto identity = identityOf(level.folder.number());
        return identity && identity->isSameThing(level.identity) && mountOf(level.folder.number()) == m_mount;
    }

    int m_top;
    std::uint64_t m_mount;
    std::vector<Level> m_levels;
    bool m_somethingStayed = false;
};

} // namespace

bool removeEntry(int folder, const std::string &name, const std::optional<FileIdentity> &expected)
{
    return TreeRemoval(folder).remove(name, expected);
}

bool removeChildren(int folder, const std::filesystem::path &shownAs, const MustStay &mustStay,
                    const ChildGone &gone)
{
    bool somethingStayed = !canBeListed(folder);
    for (const std::string &name : namesIn(folder)) {
        if ((mustStay && mustStay(shownAs / name)) || !removeEntry(folder, name))
            somethingStayed = true;
        else if (gone)
            gone(name);
    }
    return !somethingStayed;
}

bool removeListed(int folder, const std::filesystem::path &shownAs, const std::vector<ListedEntry> &listed,
                  const MustStay &mustStay, const ChildGone &gone)
{
    bool somethingStayed = false;
    for (const auto &[name, identity] : listed) {
        const auto found = identityIn(folder, name);
        if (!found || !found->isSameEntry(identity))
            continue;
        if (!found->isUntouched(identity) || (mustStay && mustStay(shownAs / name)) ||
            !removeEntry(folder, name, identity))
            somethingStayed = true;
        else if (gone)
            gone(name);
    }
    return !somethingStayed;
}

void leaveOut(TrashListing &listing, const std::filesystem::path &shownAs, const MustStay &mustStay)
{
    if (mustStay)
        listing.isWhole = std::erase_if(listing.items, [&](const ListedEntry &item) {
                              return mustStay(shownAs / item.name);
                          }) == 0;
}

bool deleteGuarded(const HeldEntry &entry, const RemovalTarget &target)
{
    return removeEntry(entry.folder.number(), entry.name, target.identity);
}

bool emptyGuarded(const HeldEntry &entry, const RemovalTarget &target, const MustStay &mustStay,
                  const ChildGone &gone)
{
    const Descriptor folder = holdFolder(entry.folder.number(), entry.name, Links::refuse);
    const auto identity = identityOf(folder.number());
    return identity && identity->isSameThing(target.identity) &&
           removeChildren(folder.number(), target.path, mustStay, gone);
}

} // namespace swabby
