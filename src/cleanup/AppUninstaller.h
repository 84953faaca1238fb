#pragma once

#include "cleanup/InstalledApp.h"
#include "cleanup/Search.h"

#include <vector>

/// Lists applications and finds what they leave behind. Every call blocks for the disk and for tools:
/// background work only.
namespace swabby::AppUninstaller {

/// The applications that can go, largest first.
std::vector<InstalledApp> scanInstalledApps(const Search &search);

/// What is there of the places where this application may leave something, in their order.
std::vector<AppLeftover> scanLeftovers(const Search &search, const InstalledApp &app);

/// Whether an application with exactly this identifier runs.
bool isRunning(const Machine &machine, const QString &bundleID);

} // namespace swabby::AppUninstaller
