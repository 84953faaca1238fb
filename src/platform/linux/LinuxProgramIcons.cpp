#include "platform/linux/LinuxProgramIcons.h"

#include "platform/posix/SmallFile.h"

namespace swabby {

QByteArray LinuxProgramIcons::picture(const IconOwner &owner, const IconRequest &request)
{
    const std::string file = find(owner, request);
    return file.empty() ? QByteArray() : smallFile(file, largestIconFile);
}

std::string LinuxProgramIcons::find(const IconOwner &owner, const IconRequest &request)
{
    const std::scoped_lock lock(m_mutex);
    m_applications.refresh();
    std::string icon(m_applications.iconFor(owner.program.native(), owner.application.toStdString()));
    return icon.starts_with('/') ? icon : m_themes.find(icon, request.pixels, request.theme.toStdString());
}

} // namespace swabby
