#include "platform/linux/LinuxProgramOrigins.h"

#include "platform/Utf8.h"
#include "platform/linux/KernelFile.h"
#include "platform/linux/PackageOwner.h"
#include "platform/linux/ProcessOwner.h"
#include "platform/linux/ProgramFinder.h"

#include <QtCore/QFile>

namespace swabby {
namespace {

/// What a sandboxed application is called by what brought it; empty for any other program.
std::string sandboxedPackage(const std::string &processFolder)
{
    constexpr std::string_view key = "name=";
    const std::string text = fileText(processFolder + "/root/.flatpak-info");
    for (std::string_view rest = text; const auto line = nextLine(rest);)
        if (line->starts_with(key))
            return std::string(line->substr(key.size())) + " (Flatpak)";
    return {};
}

} // namespace

ProgramOrigin LinuxProgramOrigins::ofProcess(std::int32_t pid)
{
    const auto statOf = [this](std::int32_t process) {
        return fileText(m_procRoot + '/' + std::to_string(process) + "/stat");
    };
    const std::string text = statOf(pid);
    const auto stat = processStatFrom(text);
    if (!stat)
        return {};
    ProgramFinder finder(m_procRoot, m_applications);
    finder.refresh();
    const auto program = finder.find(pid, *stat, nullptr);
    const std::string file = program->script.empty() ? program->path : program->script;

    ProgramOrigin origin;
    origin.account = accountOf(m_procRoot, pid);
    origin.file = textOf(file);
    const std::string parentText = statOf(stat->parentPid);
    // The first process begins what belongs to nobody else.
    if (const auto parent = processStatFrom(parentText); parent && stat->parentPid > 1)
        origin.startedBy = textOf(finder.find(stat->parentPid, *parent, nullptr)->name);
    else
        origin.startedBy = ownerOfSystem();
    const std::string sandboxed = sandboxedPackage(m_procRoot + '/' + std::to_string(pid));
    origin.package = textOf(sandboxed.empty() ? packageOwning(m_shell, file) : sandboxed);
    return origin;
}

QString LinuxProgramOrigins::packageOf(const QString &file)
{
    return textOf(packageOwning(m_shell, QFile::encodeName(file).toStdString()));
}

} // namespace swabby
