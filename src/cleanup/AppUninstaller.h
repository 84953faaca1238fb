#pragma once

#include "cleanup/ExcludeList.h"
#include "cleanup/InstalledApp.h"
#include "platform/Machine.h"
#include "platform/ScanControl.h"

#include <optional>
#include <vector>

/// Lists applications, finds what they leave behind, and moves both to the Trash. Every call blocks for the
/// disk and for tools: background work only.
namespace swabby::AppUninstaller {

/// The applications that can go, largest first.
std::vector<InstalledApp> scanInstalledApps(const Machine &machine, const ScanControl &control,
                                            const ExcludeList &excludes);

/// What is there of the places where this application may leave something, in their order.
std::vector<AppLeftover> scanLeftovers(const Machine &machine, const InstalledApp &app,
                                       const ScanControl &control, const ExcludeList &excludes);

/// Whether an application with exactly this identifier runs.
bool isRunning(const Machine &machine, const QString &bundleID);

/// What became of an application and its leftovers; no value for what stayed.
struct Uninstalled {
    std::optional<TrashedItem> app;
    std::vector<std::optional<TrashedItem>> leftovers; ///< in the order given
};

/// Moves the application to the Trash, then its leftovers, whether or not the application could be moved.
Uninstalled uninstall(const Machine &machine, const InstalledApp &app,
                      const std::vector<AppLeftover> &leftovers, const ExcludeList &excludes);

} // namespace swabby::AppUninstaller
