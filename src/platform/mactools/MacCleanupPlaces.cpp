#include "platform/mactools/MacCleanupPlaces.h"

namespace swabby {
namespace {

constexpr struct {
    const char *path; // in the home folder
    const char *description;
} knownCaches[] = {
    {".Trash", "Trash — stuff you already deleted"},
    {"Library/Caches/com.apple.Safari", "Safari's temporary browsing files"},
    {"Library/Caches/Google/Chrome", "Chrome's temporary browsing files"},
    {"Library/Caches/Firefox", "Firefox's temporary browsing files"},
    {"Library/Caches/Adobe/After Effects", "After Effects temporary preview files"},
    {"Library/Caches/CocoaPods", "Coding tool cache (CocoaPods)"},
    {"Library/Caches/Cypress", "Coding tool cache (Cypress)"},
    {"Library/Caches/com.microsoft.VSCode.ShipIt", "VS Code leftover update files"},
    {"Library/Caches/ms-playwright", "Coding tool cache (Playwright)"},
    {"Library/Caches/dotslash", "Coding tool cache (dotslash)"},
    {"Library/Caches/node-gyp", "Coding tool cache (node-gyp)"},
    {"Library/Caches/typescript", "Coding tool cache (TypeScript)"},
    {"Library/Caches/composer", "Coding tool cache (Composer)"},
    {"Library/Caches/pip", "Coding tool cache (pip)"},
    {"Library/Caches/Yarn", "Coding tool cache (Yarn)"},
    {"Library/Caches/puppeteer", "Coding tool cache (Puppeteer)"},
};

} // namespace

CleanupPlaces macCleanupPlaces(const std::filesystem::path &home, const std::filesystem::path &root)
{
    CleanupPlaces places;
    places.home = home;
    places.root = root;
    places.cachesRoot = home / "Library/Caches";
    places.trash = home / ".Trash";
    places.trashItems = places.trash;
    places.downloads = home / "Downloads";
    places.desktop = home / "Desktop";
    for (const auto &row : knownCaches)
        places.knownCaches.push_back({home / row.path, QString::fromUtf8(row.description)});
    places.packageCleanups = {{.words = {"brew", "cleanup", "-q"},
                               .cacheFolder = places.cachesRoot / "Homebrew",
                               .onlyWhenChosen = false},
                              {.words = {"pip", "cache", "purge"},
                               .cacheFolder = places.cachesRoot / "pip",
                               .onlyWhenChosen = false}};
    for (const char *name :
         {"Documents", "Desktop", "Developer", "Projects", "GitHub", "dev", "code", "Sites"})
        places.projectRoots.push_back(home / name);
    places.buildCache = home / "Library/Developer/Xcode/DerivedData";
    places.simulatorTool = "/usr/bin/xcrun";
    places.containerTools = {"/usr/local/bin/docker", "/opt/homebrew/bin/docker"};
    return places;
}

} // namespace swabby
