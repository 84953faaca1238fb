#include "platform/Permissions.h"

namespace swabby {

void Permissions::note(Permission what, bool isRefused)
{
    const std::scoped_lock guard(m_mutex);
    const bool isChanged =
        isRefused || m_described.contains(what) ? m_refused.insert(what).second : m_refused.erase(what) > 0;
    if (isChanged && m_listener)
        m_listener(m_refused);
}

void Permissions::noteRemoval(const std::filesystem::path &path, bool isRemoved)
{
    if (path.extension() == ".app")
        note(Permission::applicationManagement, !isRemoved);
}

Permissions::Refused Permissions::refused() const
{
    const std::scoped_lock guard(m_mutex);
    return m_refused;
}

void Permissions::tell(Listener listener)
{
    const std::scoped_lock guard(m_mutex);
    m_listener = std::move(listener);
}

} // namespace swabby
