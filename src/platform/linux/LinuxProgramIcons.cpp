#include "platform/linux/LinuxProgramIcons.h"

#include "platform/posix/SmallFile.h"

namespace swabby {

QByteArray LinuxProgramIcons::picture(const IconOwner &owner, const IconRequest &request)
{
    const std::scoped_lock lock(m_mutex);
    m_applications.refresh();
    const std::string icon(m_applications.iconFor(owner.program.native(), owner.application.toStdString()));
    if (icon.starts_with('/'))
        return smallFile(icon, largestIconFile);
    const std::string file = m_themes.find(icon, request.pixels, request.theme.toStdString());
    return file.empty() ? QByteArray() : smallFile(file, largestIconFile);
}

} // namespace swabby
