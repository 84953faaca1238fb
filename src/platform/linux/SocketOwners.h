#pragma once

#include <cstdint>
#include <mutex>
#include <span>
#include <string>
#include <unordered_map>
#include <unordered_set>
#include <vector>

namespace swabby {

/// Which process holds a socket. Looking through everybody's open files is expensive, so answers are kept
/// and only checked again. Safe to call from several threads.
class SocketOwners {
public:
    explicit SocketOwners(std::string procRoot) : m_procRoot(std::move(procRoot)) {}

    /// The owners of these sockets, by inode. Unknown ones are searched for among the pids, in their order,
    /// until all are found: the first process that holds one is its owner. A socket nobody shows (another
    /// user's, the kernel's own) is missing and not searched for again.
    std::unordered_map<std::uint32_t, std::int32_t> find(const std::vector<std::uint32_t> &inodes,
                                                         std::span<const std::int32_t> pids);
    /// Drops what is known of all other sockets: they have been closed.
    void forgetExcept(const std::unordered_set<std::uint32_t> &inodes);

private:
    struct Owner {
        std::int32_t pid = 0; ///< 0 for a socket that nobody shows
        std::string file;     ///< where the process holds it, "…/fd/7"
    };

    void search(std::vector<std::uint32_t> &wanted, std::span<const std::int32_t> pids);

    const std::string m_procRoot;
    std::mutex m_mutex;
    std::unordered_map<std::uint32_t, Owner> m_owners;
};

} // namespace swabby
