#pragma once

#include <array>
#include <filesystem>
#include <functional>
#include <mutex>
#include <set>

namespace swabby {

/// What some systems let a program do only when its person allows that.
enum class Permission { fullDiskAccess, applicationManagement, notifications, automation };
/// As files call them, in that order.
inline constexpr std::array permissionNames = {"fullDiskAccess", "applicationManagement", "notifications",
                                               "automation"};

/// What is refused for want of a permission, as far as it was noticed by what came of trying. Nobody notes
/// anything where nothing has to be allowed. Any thread; never waits.
class Permissions {
public:
    using Refused = std::set<Permission>;
    using Listener = std::function<void(const Refused &refused)>;

    /// What is refused whatever comes of trying; for machines that are described.
    void alwaysRefuse(Refused what) { m_described = std::move(what); }
    /// Something that needs it was tried just now.
    void note(Permission what, bool isRefused);
    /// The same of a file that was to be moved to the Trash: an application's permission is one of its own.
    void noteRemoval(const std::filesystem::path &path, bool isRemoved);
    Refused refused() const;
    /// Who is told of every change from here on, on the thread that noticed it, once at a time; an empty one
    /// ends it.
    void tell(Listener listener);

private:
    mutable std::mutex m_mutex;
    Refused m_described;
    Refused m_refused;
    Listener m_listener;
};

} // namespace swabby
