#include "platform/linux/ProgramFolders.h"

#include "platform/linux/KernelFile.h"

#include <sys/stat.h>
#include <unistd.h>

#include <algorithm>
#include <array>
#include <filesystem>
#include <optional>

namespace swabby {

namespace {

using namespace std::string_view_literals;

constexpr std::string_view interpreters =
    "ash bash busybox bwrap cjs dash dbus-launch dotnet electron env fish flatpak gapplication gjs "
    "gjs-console gtk-launch ionice java ksh lua mono nice node nodejs nohup perl php pkexec pypy python "
    "ruby setsid sh snap snap-exec sudo systemd-run tclsh timeout wine wish x-terminal-emulator xdg-open "
    "xterm zsh ";

constexpr std::string_view sharedFolders =
    "/bin /sbin /lib /lib64 /usr /usr/bin /usr/sbin /usr/lib /usr/lib64 /usr/libexec /usr/share "
    "/usr/games /usr/local /usr/local/bin /usr/local/sbin /usr/local/lib /usr/local/games "
    "/usr/local/share /opt /opt/bin /home /root /tmp /var /var/tmp /snap /snap/bin /app /app/bin ";

constexpr std::string_view sharedHomeFolders =
    "/bin /.local /.local/bin /.local/share /.local/lib /Desktop /Downloads /Documents /Applications "
    "/.cache /.config ";

constexpr std::array wrapperFolders = {
    "/usr/lib/"sv, "/usr/lib64/"sv, "/usr/libexec/"sv, "/usr/share/"sv, "/opt/"sv,
};

bool isFolder(const std::string &path)
{
    struct stat status = {};
    return ::stat(path.c_str(), &status) == 0 && S_ISDIR(status.st_mode);
}

bool isExecutableFile(const std::string &path)
{
    struct stat status = {};
    return ::stat(path.c_str(), &status) == 0 && S_ISREG(status.st_mode) && (status.st_mode & 0111) != 0;
}

bool hasWord(std::string_view words, std::string_view word)
{
    while (!words.empty()) {
        if (nextWord(words) == word)
            return true;
    }
    return false;
}

/// The path as seen from the root: without its leading part; no value when it lies elsewhere.
std::optional<std::string_view> below(std::string_view path, std::string_view root)
{
    if (!path.starts_with(root) || (path.size() > root.size() && path[root.size()] != '/'))
        return std::nullopt;
    return path.substr(root.size());
}

} // namespace

std::string findProgram(std::string_view command, const std::vector<std::string> &searched)
{
    if (command.empty())
        return {};
    if (command.find('/') != std::string_view::npos)
        return command.front() == '/' && isExecutableFile(std::string(command)) ? std::string(command) : "";
    for (const std::string &folder : searched) {
        std::string path = folder + '/' + std::string(command);
        if (isExecutableFile(path))
            return path;
    }
    return {};
}

std::string withoutLinks(const std::string &path)
{
    std::error_code error;
    const std::filesystem::path real = std::filesystem::canonical(path, error);
    return error ? path : real.string();
}

std::string_view fileName(std::string_view path)
{
    const std::size_t slash = path.rfind('/');
    return slash == std::string_view::npos ? path : path.substr(slash + 1);
}

std::string_view parentFolder(std::string_view path)
{
    const std::size_t slash = path.rfind('/');
    return slash == std::string_view::npos ? std::string_view() : path.substr(0, slash);
}

bool isInterpreter(std::string_view program)
{
    std::string_view name = fileName(program);
    if (hasWord(interpreters, name))
        return true;
    // python3.11, lua5.4, ruby3.1
    const std::size_t end = name.find_last_not_of("0123456789.-");
    return end != std::string_view::npos && hasWord(interpreters, name.substr(0, end + 1));
}

std::vector<std::string> withoutEnvironment(std::vector<std::string> words)
{
    if (words.empty() || fileName(words.front()) != "env")
        return words;
    const auto program = std::find_if(words.begin() + 1, words.end(), [](const std::string &word) {
        return !word.starts_with('-') && word.find('=') == std::string::npos;
    });
    words.erase(words.begin(), program);
    return words;
}

std::string startedProgram(const std::vector<std::string> &words, const std::vector<std::string> &searched)
{
    const std::vector<std::string> command = withoutEnvironment(words);
    if (command.empty())
        return {};
    if (isInterpreter(command.front())) {
        const auto script = std::find_if(command.begin() + 1, command.end(),
                                         [](const std::string &word) { return word.starts_with('/'); });
        if (script != command.end())
            return *script;
    }
    std::string program = findProgram(command.front(), searched);
    return program.empty() ? command.front() : program;
}

bool isSharedFolder(std::string_view folder, const ProgramFolders &folders)
{
    if (const auto inHome = below(folder, folders.home);
        inHome && (inHome->empty() || hasWord(sharedHomeFolders, *inHome)))
        return true;
    const auto path = below(folder, folders.root);
    // Libraries of one processor type, such as /usr/lib/x86_64-linux-gnu, are everybody's too.
    return path && (path->empty() || hasWord(sharedFolders, *path) || path->ends_with("-linux-gnu"));
}

std::string privateFolder(const std::string &program, const ProgramFolders &folders)
{
    std::string_view folder = parentFolder(program);
    if (!isSharedFolder(folder, folders)) {
        const std::string_view above = parentFolder(folder);
        return std::string(fileName(folder) == "bin" && !isSharedFolder(above, folders) ? above : folder);
    }
    for (const std::string_view start : wrapperFolders) {
        std::string candidate = folders.root;
        candidate.append(start).append(fileName(program));
        if (isFolder(candidate))
            return candidate;
    }
    return {};
}

bool isVendorProgram(std::string_view path, std::string_view root)
{
    const auto inside = below(path, root);
    if (!inside)
        return false;
    if (inside->starts_with("/usr/"))
        return !inside->starts_with("/usr/local/");
    return inside->starts_with("/bin/") || inside->starts_with("/sbin/") || inside->starts_with("/lib");
}

bool isVendorDefinition(std::string_view path, std::string_view root)
{
    const auto inside = below(path, root);
    return isVendorProgram(path, root) || (inside && inside->starts_with("/etc/xdg/"));
}

} // namespace swabby
