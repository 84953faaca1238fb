#include "cleanup/ProjectFolder.h"

#include "platform/FolderListing.h"
#include "platform/posix/RegularFile.h"

#include <algorithm>
#include <array>
#include <string>
#include <string_view>

namespace swabby {
namespace {

namespace fs = std::filesystem;

std::string lowered(std::string text)
{
    for (char &letter : text)
        if (letter >= 'A' && letter <= 'Z')
            letter = static_cast<char>(letter - 'A' + 'a');
    return text;
}

/// Whether the names on the way down say that it is an application's, a backup's or thrown away.
bool isSetAside(const fs::path &below)
{
    std::string before;
    for (const fs::path &part : below) {
        const std::string name = lowered(part.native());
        if (name.ends_with(".app") || (before == "resources" && name.starts_with("app")) ||
            name.find("backup") != std::string::npos || name.ends_with(".bak") ||
            name.starts_with(".snapshot") || name.starts_with(".trash") || name == "trash" ||
            name == "$recycle.bin")
            return true;
        before = name;
    }
    return false;
}

/// The folder itself, then those above it as long as they are below the one that was searched.
std::vector<fs::path> withFoldersAbove(fs::path folder, const fs::path &searched)
{
    std::vector<fs::path> folders = {folder};
    for (folder = folder.parent_path(); isUnder(folder, searched); folder = folder.parent_path())
        folders.push_back(folder);
    return folders;
}

bool isUnderVersionControl(const fs::path &folder)
{
    return std::ranges::any_of(std::array{".git", ".hg", ".svn", ".jj"}, [&](const char *name) {
        std::error_code problem;
        return fs::exists(folder / name, problem);
    });
}

enum class Code { machine, anyProgram };

/// Whether the file is a program to be started. A script that says its language in its name is one of the
/// project's helpers.
bool isProgram(const fs::path &file, Code code)
{
    if (lowered(file.extension().native()) == ".exe")
        return true;
    std::error_code problem;
    const fs::file_status status = fs::symlink_status(file, problem);
    constexpr fs::perms execution = fs::perms::owner_exec | fs::perms::group_exec | fs::perms::others_exec;
    if (problem || !fs::is_regular_file(status) || (status.permissions() & execution) == fs::perms::none)
        return false;
    std::array<char, 4> start = {};
    const auto opened = RegularFile::open(file);
    if (!opened || !opened->readAt(0, start.data(), start.size()))
        return false;
    const std::string_view mark(start.data(), start.size());
    if (mark.starts_with("#!"))
        return code == Code::anyProgram && !file.has_extension();
    constexpr std::array<std::string_view, 4> machineCode = {"\x7F"
                                                             "ELF",
                                                             "\xCF\xFA\xED\xFE", "\xCE\xFA\xED\xFE",
                                                             "\xCA\xFE\xBA\xBE"};
    return std::ranges::count(machineCode, mark) > 0;
}

bool holdsProgram(const fs::path &folder, Code code)
{
    return std::ranges::any_of(childrenOf(folder),
                               [code](const fs::path &child) { return isProgram(child, code); });
}

} // namespace

bool isProject(const fs::path &folder, const fs::path &searched)
{
    if (isSetAside(folder.lexically_relative(searched)))
        return false;
    for (const fs::path &above : withFoldersAbove(folder, searched)) {
        if (isUnderVersionControl(above))
            return true;
        if (holdsProgram(above, Code::anyProgram) || holdsProgram(above / "bin", Code::machine))
            return false;
    }
    return true;
}

fs::path workFolder(const fs::path &folder, const fs::path &searched)
{
    for (const fs::path &above : withFoldersAbove(folder, searched))
        if (isUnderVersionControl(above))
            return above;
    return folder;
}

} // namespace swabby
