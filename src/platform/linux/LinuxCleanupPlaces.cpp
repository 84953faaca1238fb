#include "platform/linux/LinuxCleanupPlaces.h"

#include "platform/FolderListing.h"
#include "platform/linux/KernelFile.h"

#include <algorithm>

namespace swabby {
namespace {

namespace fs = std::filesystem;

constexpr struct {
    const char *path; // in the folder of caches
    const char *description;
} knownCaches[] = {
    {"google-chrome", "Chrome's temporary browsing files"},
    {"mozilla/firefox", "Firefox's temporary browsing files"},
    {"CocoaPods", "Coding tool cache (CocoaPods)"},
    {"Cypress", "Coding tool cache (Cypress)"},
    {"ms-playwright", "Coding tool cache (Playwright)"},
    {"dotslash", "Coding tool cache (dotslash)"},
    {"node-gyp", "Coding tool cache (node-gyp)"},
    {"typescript", "Coding tool cache (TypeScript)"},
    {"composer", "Coding tool cache (Composer)"},
    {"pip", "Coding tool cache (pip)"},
    {"yarn", "Coding tool cache (Yarn)"},
    {"puppeteer", "Coding tool cache (Puppeteer)"},
};

/// The path with every link followed, as far as it is there, and without a slash at its end.
fs::path resolved(const fs::path &path)
{
    std::error_code problem;
    const fs::path whole = fs::weakly_canonical(path, problem);
    const fs::path plain = (problem ? path : whole).lexically_normal();
    return plain.has_filename() ? plain : plain.parent_path();
}

/// The text between the quotes, its escapes undone; no value when the quotes are missing.
std::optional<std::string> quotedText(std::string_view value)
{
    if (value.size() < 2 || value.front() != '"')
        return std::nullopt;
    std::string text;
    for (std::size_t index = 1; index < value.size(); ++index) {
        if (value[index] == '"')
            return text;
        if (value[index] == '\\' && index + 1 < value.size())
            ++index;
        text += value[index];
    }
    return std::nullopt;
}

} // namespace

fs::path userFolderIn(std::string_view text, std::string_view name, const fs::path &home)
{
    const std::string key = "XDG_" + std::string(name) + "_DIR";
    constexpr std::string_view homeVariable = "$HOME";
    fs::path folder;
    while (const auto line = nextLine(text)) {
        const std::string_view content = trimmed(*line);
        const std::size_t equals = content.find('=');
        if (equals == std::string_view::npos || trimmed(content.substr(0, equals)) != key)
            continue;
        const std::optional<std::string> value = quotedText(trimmed(content.substr(equals + 1)));
        if (!value)
            continue;
        if (value->starts_with(homeVariable) &&
            (value->size() == homeVariable.size() || (*value)[homeVariable.size()] == '/'))
            folder = home.native() + value->substr(homeVariable.size());
        else if (value->starts_with('/'))
            folder = *value;
    }
    if (folder.empty() || isAtOrUnder(resolved(home), resolved(folder)))
        return {};
    folder = folder.lexically_normal();
    return folder.has_filename() ? folder : folder.parent_path();
}

CleanupPlaces linuxCleanupPlaces(const UserFolders &folders)
{
    CleanupPlaces places;
    places.home = folders.home;
    places.cachesRoot = folders.cache;
    places.trash = folders.data / "Trash";
    places.trashItems = places.trash / "files";
    const std::string userFolders = fileText((folders.config / "user-dirs.dirs").native());
    const auto named = [&](const char *name, const char *otherwise) {
        const fs::path folder = userFolderIn(userFolders, name, folders.home);
        return folder.empty() ? folders.home / otherwise : folder;
    };
    places.downloads = named("DOWNLOAD", "Downloads");
    places.desktop = named("DESKTOP", "Desktop");

    places.knownCaches.push_back({places.trash, QStringLiteral("Trash \u2014 stuff you already deleted")});
    for (const auto &row : knownCaches)
        places.knownCaches.push_back({folders.cache / row.path, QString::fromUtf8(row.description)});
    places.packageCleanups = {{.words = {"brew", "cleanup", "-q"}, .cacheFolder = folders.cache / "Homebrew"},
                              {.words = {"pip", "cache", "purge"}, .cacheFolder = folders.cache / "pip"}};
    for (const char *name :
         {"Documents", "Desktop", "Developer", "Projects", "GitHub", "dev", "code", "Sites"})
        places.projectRoots.push_back(folders.home / name);
    places.containerTools = {"/usr/local/bin/docker", "/opt/homebrew/bin/docker", "/usr/bin/docker"};
    return places;
}

} // namespace swabby
