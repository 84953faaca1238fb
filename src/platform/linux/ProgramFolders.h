#pragma once

#include <string>
#include <string_view>
#include <vector>

namespace swabby {

/// Where programs lie on this machine. Paths are absolute and without a trailing slash.
struct ProgramFolders {
    std::string root; ///< what stands for "/": empty on the real machine
    std::string home;
    std::vector<std::string> searched; ///< where a bare program name is looked for, in order
};

/// The program file that a command word means, found through the searched folders when it is a bare name;
/// links are not followed. Empty when there is no such executable file.
std::string findProgram(std::string_view command, const std::vector<std::string> &searched);

/// The path with every link followed; the path as it stands when that fails.
std::string withoutLinks(const std::string &path);

/// The last part of a path.
std::string_view fileName(std::string_view path);

/// The path without its last part, empty for a name alone or something directly under "/".
std::string_view parentFolder(std::string_view path);

/// Whether a program runs other programs or scripts (shells, python3.11, env, flatpak, …), so that it
/// says nothing about which application is running.
bool isInterpreter(std::string_view program);

/// The words of a command without "env", its options and assignments in front of the program.
std::vector<std::string> withoutEnvironment(std::vector<std::string> words);

/// What a command really starts: its program, found as by findProgram(), or for an interpreter the script
/// given by its whole path. As written when there is no such file, empty for an empty command.
std::string startedProgram(const std::vector<std::string> &words, const std::vector<std::string> &searched);

/// Whether programs of all kinds share this folder (/usr/bin, /opt, the home folder, …).
bool isSharedFolder(std::string_view folder, const ProgramFolders &folders);

/// The folder that belongs to this program alone, such as /opt/google/chrome or, for a starter script
/// /usr/bin/chromium, /usr/lib/chromium. Empty when there is none.
std::string privateFolder(const std::string &program, const ProgramFolders &folders);

/// Whether the system's packages put this file where it is: it lies under /usr (or /bin, /sbin, /lib of
/// systems that still part them), but not in /usr/local. A definition may also lie in /etc/xdg. Packages of
/// other makers that install there count too; what people or installers put into /opt, /usr/local, /etc or
/// a home folder does not.
bool isVendorProgram(std::string_view path, std::string_view root);
bool isVendorDefinition(std::string_view path, std::string_view root);

} // namespace swabby
