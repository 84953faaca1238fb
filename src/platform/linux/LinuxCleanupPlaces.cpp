#include "platform/linux/LinuxCleanupPlaces.h"

#include "platform/FolderListing.h"
#include "platform/linux/KernelFile.h"

#include <algorithm>

namespace swabby {
namespace {

namespace fs = std::filesystem;

struct CacheRow {
    const char *path;
    const char *description; ///< of a build tool's the tool's name
};

constexpr CacheRow programCaches[] = {
    // In the folder of caches.
    {"google-chrome", "Chrome's temporary browsing files"},
    {"mozilla/firefox", "Firefox's temporary browsing files"},
    {"thumbnails", "Small previews of pictures and documents"},
    {"mesa_shader_cache", "Graphics driver cache (Mesa)"},
    {"mesa_shader_cache_db", "Graphics driver cache (Mesa)"},
    {"mesa_shader_cache_sf", "Graphics driver cache (Mesa)"},
    {"radv_builtin_shaders32", "Graphics driver cache (RADV)"},
    {"radv_builtin_shaders64", "Graphics driver cache (RADV)"},
    {"nvidia/GLCache", "Graphics driver cache (NVIDIA)"},
};

constexpr CacheRow toolCaches[] = {
    // In the folder of caches.
    {"CocoaPods", "CocoaPods"},
    {"Cypress", "Cypress"},
    {"ms-playwright", "Playwright"},
    {"dotslash", "dotslash"},
    {"node-gyp", "node-gyp"},
    {"typescript", "TypeScript"},
    {"composer", "Composer"},
    {"pip", "pip"},
    {"yarn", "Yarn"},
    {"puppeteer", "Puppeteer"},
    {"go-build", "Go"},
    {"npm/_cacache", "npm"},
    {"pnpm", "pnpm"},
    {"uv", "uv"},
};

// Beside these lie the settings of the same tools, what somebody installed with them, and in Maven's
// repository what was built here and is nowhere else.
constexpr CacheRow driverCaches[] = {
    {"GLCache", "Graphics driver cache (NVIDIA)"},
    {"ComputeCache", "Graphics driver cache (CUDA)"},
};
constexpr CacheRow npmCaches[] = {
    {"_cacache", "npm"},
};
constexpr CacheRow mavenCaches[] = {
    {"wrapper/dists", "Maven"},
};
constexpr CacheRow cargoCaches[] = {
    {"registry/cache", "Cargo"},
    {"registry/src", "Cargo, unpacked"},
};
constexpr CacheRow gradleCaches[] = {
    {"caches", "Gradle"},
};

/// In the folder of caches, with what there is to lose.
constexpr const char *moreThanCaches[] = {
    "Google/AndroidStudio*",   // the editor's local history
    "JetBrains",               // the editors' local history
    "emacs",                   // backups and what was not saved
    "*vim",                    // backups, undo and what was not saved
    "audacity",                // recordings that were not saved
    "inkscape",                // drawings that were not saved
    "mypaint",                 // paintings that were not saved
    "xournalpp",               // notes that were not saved
    "simple-scan",             // scans that were not saved
    "ART",                     // how photos were edited
    "RawTherapee*",            // how photos were edited
    "evolution",               // changes the server has not heard of
    "gdfuse",                  // writes the cloud has not received
    "onedriver",               // writes the cloud has not received, and its token
    "rclone",                  // writes the cloud has not received
    "obexd",                   // files received over Bluetooth
    "winetricks",              // files only a person can download again
    "R/renv",                  // packages that projects link to
    "pypoetry",                // virtual environments
    "*venv*",                  // virtual environments
    "*virtualenv*",            // virtual environments
    "deno/location_data",      // what programs have stored
    "google-vscode-extension", // a token
    "huggingface",             // a token
    "keyring*",                // keys
    "nheko",                   // keys of encrypted messages
    "*credential*",            // passwords and tokens
    "*oauth*",                 // tokens
    "ms-playwright/mcp-*",     // browsers that are signed in
    "go-build/fuzz",           // what hours of fuzzing have found
    "tmp/*",                   // what a sandboxed program keeps until it is started again
};

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

/// A folder of the person's that a tool keeps its things in: where it was told to, if that is called after it
/// and does not hold the home folder, else the usual one.
fs::path toolFolder(const fs::path &said, const char *tool, const fs::path &home)
{
    const fs::path usual = home / (std::string(".") + tool);
    const bool isCalledAfterIt = said.filename().native().find(tool) != std::string::npos;
    // With its links followed: the folder of caches may be where it leads.
    return resolved(isCalledAfterIt && !isAtOrUnder(resolved(home), resolved(said)) ? said : usual);
}

template <std::size_t count>
void add(CleanupPlaces &places, const CacheRow (&rows)[count], const fs::path &folder, bool areTools)
{
    const bool areCaches = folder == places.cachesRoot;
    for (const CacheRow &row : rows) {
        const QString text = QString::fromUtf8(row.description);
        places.knownCaches.push_back(
            {.path = folder / row.path,
             .description = areTools ? QStringLiteral("Coding tool cache (%1)").arg(text) : text,
             .foundIn = areCaches ? fs::path() : folder,
             .isBuildTool = areTools});
    }
}

void addHomeCaches(CleanupPlaces &places, const UserFolders &folders)
{
    add(places, driverCaches, resolved(folders.home / ".nv"), false);
    add(places, npmCaches, resolved(folders.home / ".npm"), true);
    add(places, mavenCaches, resolved(folders.home / ".m2"), true);
    add(places, cargoCaches, toolFolder(folders.cargo, "cargo", folders.home), true);
    add(places, gradleCaches, toolFolder(folders.gradle, "gradle", folders.home), true);
}

void addCaches(CleanupPlaces &places)
{
    const fs::path &root = places.cachesRoot;
    add(places, programCaches, root, false);
    add(places, toolCaches, root, true);
    // Their own settings may name another folder than the one that was shown.
    const fs::path brew = root / "Homebrew", pip = root / "pip";
    places.packageCleanups = {
        {.words = {"HOMEBREW_CACHE=" + brew.native(), "brew", "cleanup", "-q"}, .cacheFolder = brew},
        {.words = {"PIP_CACHE_DIR=" + pip.native(), "pip", "cache", "purge"}, .cacheFolder = pip}};
}

} // namespace

fs::path resolved(const fs::path &path)
{
    std::error_code problem;
    const fs::path whole = fs::weakly_canonical(path, problem);
    const fs::path plain = (problem ? path : whole).lexically_normal();
    return plain.has_filename() ? plain : plain.parent_path();
}

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
    if (!folders.cache.empty())
        addCaches(places);
    addHomeCaches(places, folders);
    places.moreThanCaches.assign(std::begin(moreThanCaches), std::end(moreThanCaches));
    places.offersFoldersOfKnown = false;
    places.sandboxes = resolved(folders.home / ".var/app");
    for (const char *name :
         {"Documents", "Desktop", "Developer", "Projects", "GitHub", "dev", "code", "Sites"})
        places.projectRoots.push_back(folders.home / name);
    places.ageFrom = AgeFrom::lastTouch;
    places.containerTools = {"/usr/local/bin/docker", "/opt/homebrew/bin/docker", "/usr/bin/docker"};
    return places;
}

} // namespace swabby
