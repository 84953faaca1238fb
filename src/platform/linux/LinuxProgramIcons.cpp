#include "platform/linux/LinuxProgramIcons.h"

#include "platform/linux/KernelFile.h"
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
    const auto fileOf = [&](const std::string &icon) {
        return icon.starts_with('/') ? icon
                                     : m_themes.find(icon, request.pixels, request.theme.toStdString());
    };
    if (const std::string file = fileOf(owner.icon.toStdString()); isThere(file))
        return file;
    m_applications.refresh();
    return fileOf(
        std::string(m_applications.iconFor(owner.program.native(), owner.application.toStdString())));
}

} // namespace swabby
