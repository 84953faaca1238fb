#include "platform/linux/ProgramFinder.h"

#include "platform/linux/KernelFile.h"

#include <algorithm>

namespace swabby {

namespace {

/// The arguments of a process as the kernel keeps them, each ended by a zero.
std::vector<std::string> argumentsFrom(std::string_view text)
{
    std::vector<std::string> arguments;
    while (!text.empty()) {
        const std::size_t end = text.find('\0');
        arguments.emplace_back(text.substr(0, end));
        text.remove_prefix(end == std::string_view::npos ? text.size() : end + 1);
    }
    return arguments;
}

/// Folders that hold the helpers of programs, none that a person starts.
bool isHelperFolder(std::string_view path)
{
    return path.starts_with("/usr/lib") || path.starts_with("/lib");
}

/// Where sandboxed applications see their own files, and where application images are mounted.
bool isPackedApplication(std::string_view path)
{
    return path.starts_with("/app/") || path.starts_with("/tmp/.mount_");
}

} // namespace

ProgramFinder::ProgramFinder(std::string procRoot, DesktopApplications applications)
    : m_procRoot(std::move(procRoot)), m_applications(std::move(applications))
{
}

std::shared_ptr<const Program> ProgramFinder::find(std::int32_t pid, const ProcessStat &stat,
                                                   const Program *parent) const
{
    const auto program = std::make_shared<Program>();
    const std::string command(stat.command);
    if (stat.isKernelThread) {
        program->path = '[' + command + ']';
        program->name = command;
        return program;
    }

    const std::string folder = m_procRoot + '/' + std::to_string(pid);
    constexpr std::string_view deleted = " (deleted)"; // its file was replaced while it runs
    program->path = linkTarget(folder + "/exe");
    if (program->path.ends_with(deleted))
        program->path.resize(program->path.size() - deleted.size());
    if (program->path.empty()) {
        // Other people's processes do not show their program; the arguments are for everybody to read.
        const auto arguments = argumentsFrom(fileText(folder + "/cmdline"));
        const bool isAbsolute = !arguments.empty() && arguments.front().starts_with('/');
        program->path = isAbsolute ? arguments.front().substr(0, arguments.front().find(' ')) : command;
    } else if (isInterpreter(program->path)) {
        const auto arguments = argumentsFrom(fileText(folder + "/cmdline"));
        const auto script =
            std::find_if(arguments.begin() + std::min<std::ptrdiff_t>(1, std::ssize(arguments)),
                         arguments.end(), [](const auto &word) { return !word.starts_with('-'); });
        if (script != arguments.end() && script->starts_with('/'))
            program->script = withoutLinks(*script);
    }

    program->name = applicationOf(pid, *program, parent);
    program->isApp = !program->name.empty();
    program->isBrowser = program->isApp && m_applications.isBrowser(program->name);
    if (!program->isApp) {
        program->name = fileName(program->path);
        program->title = fileName(program->script);
    }
    if (program->name.empty())
        program->name = command;
    return program;
}

std::string ProgramFinder::applicationOf(std::int32_t pid, const Program &program,
                                         const Program *parent) const
{
    if (const auto name = m_applications.nameFor(program.path); !name.empty())
        return std::string(name);
    if (!program.script.empty())
        return std::string(m_applications.nameForScript(program.script));
    if (isPackedApplication(program.path)) {
        const std::string groups = fileText(m_procRoot + '/' + std::to_string(pid) + "/cgroup");
        for (std::string_view rest = groups; const auto group = nextLine(rest);) {
            if (const auto name = m_applications.nameForControlGroup(*group); !name.empty())
                return std::string(name);
        }
    }
    if (parent && parent->isApp && isHelperFolder(program.path) && !isInterpreter(program.path))
        return parent->name;
    return {};
}

} // namespace swabby
