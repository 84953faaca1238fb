#include "platform/linux/SocketOwners.h"

#include "platform/linux/KernelFile.h"

#include <algorithm>

namespace swabby {

namespace {

/// The inode in "socket:[123]"; no value for any other kind of open file.
std::optional<std::uint32_t> socketInode(std::string_view target)
{
    constexpr std::string_view start = "socket:[";
    if (!target.starts_with(start) || !target.ends_with(']'))
        return std::nullopt;
    return integerOf<std::uint32_t>(target.substr(start.size(), target.size() - start.size() - 1));
}

} // namespace

std::unordered_map<std::uint32_t, std::int32_t> SocketOwners::find(const std::vector<std::uint32_t> &inodes,
                                                                   std::span<const std::int32_t> pids)
{
    const std::lock_guard lock(m_mutex);
    std::vector<std::uint32_t> wanted;
    for (const std::uint32_t inode : inodes) {
        const auto known = m_owners.find(inode);
        // A server may have passed its connection on, or the pid may be another process by now.
        const bool isStale = known != m_owners.end() && known->second.pid != 0 &&
                             socketInode(linkTarget(known->second.file)) != inode;
        if (isStale)
            m_owners.erase(known);
        if (isStale || known == m_owners.end())
            wanted.push_back(inode);
    }
    search(wanted, pids);
    for (const std::uint32_t inode : wanted)
        m_owners[inode] = {};

    std::unordered_map<std::uint32_t, std::int32_t> found;
    for (const std::uint32_t inode : inodes) {
        if (const std::int32_t pid = m_owners[inode].pid; pid != 0)
            found[inode] = pid;
    }
    return found;
}

void SocketOwners::forgetExcept(const std::unordered_set<std::uint32_t> &inodes)
{
    const std::lock_guard lock(m_mutex);
    std::erase_if(m_owners, [&](const auto &entry) { return !inodes.contains(entry.first); });
}

/// Leaves in wanted what was not found.
void SocketOwners::search(std::vector<std::uint32_t> &wanted, std::span<const std::int32_t> pids)
{
    for (const std::int32_t pid : pids) {
        if (wanted.empty())
            return;
        const std::string folder = m_procRoot + '/' + std::to_string(pid) + "/fd";
        for (const std::string &name : folderEntries(folder)) {
            std::string file = folder + '/' + name;
            const auto inode = socketInode(linkTarget(file));
            const auto place = inode ? std::find(wanted.begin(), wanted.end(), *inode) : wanted.end();
            if (place == wanted.end())
                continue;
            m_owners[*inode] = Owner{pid, std::move(file)};
            *place = wanted.back();
            wanted.pop_back();
        }
    }
}

} // namespace swabby
