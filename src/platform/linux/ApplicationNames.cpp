#include "platform/linux/ApplicationNames.h"

#include "platform/FolderListing.h"
#include "platform/linux/DesktopEntry.h"
#include "platform/linux/KernelFile.h"
#include "platform/linux/ProgramFolders.h"

#include <algorithm>

namespace swabby {
namespace {

namespace fs = std::filesystem;

bool isLetter(char letter)
{
    return (letter >= 'A' && letter <= 'Z') || (letter >= 'a' && letter <= 'z');
}

std::string lowered(std::string text)
{
    std::ranges::transform(text, text.begin(), [](char letter) {
        return letter >= 'A' && letter <= 'Z' ? static_cast<char>(letter - 'A' + 'a') : letter;
    });
    return text;
}

bool isNamed(const fs::path &file, const DesktopEntry &entry, const std::vector<std::string> &names)
{
    return std::ranges::count(names, lowered(entry.name)) > 0 ||
           std::ranges::count(names, lowered(file.stem().native())) > 0;
}

bool hasEntry(const std::vector<std::string> &names, const fs::path &application,
              const InstalledNames &installed)
{
    for (const fs::path &folder : installed.entryFolders)
        for (const fs::path &file : childrenOf(folder)) {
            const DesktopEntry entry =
                file.extension() == ".desktop" ? desktopEntryFrom(fileText(file.native())) : DesktopEntry();
            if (entry.type == "Application" && !entry.isHidden && isNamed(file, entry, names) &&
                !startsFrom(application, file, installed.searched))
                return true;
        }
    return false;
}

bool hasImage(const std::vector<std::string> &names, const fs::path &application,
              std::vector<fs::path> folders)
{
    folders.push_back(application.parent_path());
    for (const fs::path &folder : folders)
        for (const fs::path &file : childrenOf(withoutLinks(folder.native())))
            if (isImageName(file) && file != application && std::ranges::any_of(names, [&](const auto &name) {
                    return beginsWithName(file.stem().native(), name);
                }))
                return true;
    return false;
}

bool hasPackage(std::vector<std::string> names, const std::vector<fs::path> &folders)
{
    for (std::string &name : names) {
        std::ranges::replace(name, ' ', '-');
        for (const fs::path &folder : folders)
            if (isOneFileName(QString::fromStdString(name)) &&
                (isThere((folder / name).native()) || isThere((folder / (name + ".list")).native())))
                return true;
    }
    return false;
}

} // namespace

bool isImageName(const fs::path &path)
{
    return lowered(path.extension().native()) == ".appimage";
}

bool isCalledAfter(const std::string &text, const std::string &name)
{
    if (name.empty() || !lowered(text).starts_with(lowered(name)))
        return false;
    std::string_view version = std::string_view(text).substr(name.size());
    if (!version.empty() && std::string_view("-_. ").find(version.front()) != std::string_view::npos)
        version.remove_prefix(1);
    return version.empty() ? text.size() == name.size() : version.front() >= '0' && version.front() <= '9';
}

bool beginsWithName(const std::string &text, const std::string &name)
{
    return !name.empty() && lowered(text).starts_with(lowered(name)) &&
           (text.size() == name.size() || !isLetter(text[name.size()]));
}

bool startsFrom(const fs::path &application, const fs::path &entry, const std::vector<std::string> &searched)
{
    const auto words = execArguments(desktopEntryFrom(fileText(entry.native())).exec);
    return isAtOrUnder(withoutLinks(startedProgram(words, searched)), application);
}

bool hasNamesake(const FoundApplication &application, const InstalledNames &installed)
{
    const std::string id = application.bundleId.toStdString();
    const std::vector<std::string> names = {lowered(application.name.toStdString()), lowered(id)};
    return hasEntry(names, application.path, installed) ||
           hasImage(names, application.path, installed.imageFolders) ||
           hasPackage({names[0], names[1], id}, installed.packageFolders);
}

} // namespace swabby
