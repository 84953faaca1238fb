#pragma once

#include <QtCore/QString>

#include <filesystem>
#include <optional>
#include <string>
#include <vector>

namespace swabby {

/// What the age of something counts from: when it was last modified, or the last that was done to it and to
/// everything in it, its making included.
enum class AgeFrom { modification, lastTouch };

/// A folder that is known to be made again when it is missed.
struct KnownCache {
    std::filesystem::path path;
    QString description;
    std::filesystem::path foundIn{}; ///< what it lies in; empty for the folder of caches
    bool isBuildTool = false;        ///< whether developers' tools are the ones to fill it again

    bool operator==(const KnownCache &) const = default;
};

/// A package manager's own way to drop what it keeps.
struct PackageCleanup {
    std::vector<std::string> words;    ///< what /usr/bin/env is given: settings, the command, its arguments
    std::filesystem::path cacheFolder; ///< what it clears: while that must stay, it does not run
    /// Whether it runs only when that folder was among what somebody agreed to remove.
    bool onlyWhenChosen = true;
};

/// What decides which engine the person's container tool speaks with.
struct ContainerSettings {
    std::string host;             ///< the value of DOCKER_HOST
    std::string context;          ///< the value of DOCKER_CONTEXT
    std::filesystem::path folder; ///< where the tool keeps its own settings
};

/// Where clutter lies on the machine looked after. Paths are absolute and without a trailing slash; one
/// that is empty does not exist on this kind of machine, and neither does what would lie there.
struct CleanupPlaces {
    std::filesystem::path home;
    std::filesystem::path root;       ///< what stands for "/"; empty on a real machine
    std::filesystem::path cachesRoot; ///< empty too when nothing is known to hold caches only
    std::filesystem::path trash;
    std::filesystem::path trashItems; ///< the folder whose children were thrown away; may be the Trash itself
    std::filesystem::path downloads;
    std::filesystem::path desktop;
    std::vector<KnownCache> knownCaches; ///< the Trash first; of equal sizes the earlier one comes first
    /// What lies in the folder of caches and is more than one, "*" standing for any letters: a folder that is
    /// or holds one of them is never offered.
    std::vector<std::filesystem::path> moreThanCaches;
    /// Whether a folder of caches that holds a known one is looked at as a whole too.
    bool offersFoldersOfKnown = true;
    /// The folder with one for each sandboxed application, whose "cache" in there is a folder of caches.
    std::filesystem::path sandboxes;
    std::vector<PackageCleanup> packageCleanups;
    std::vector<std::filesystem::path> projectRoots; ///< those that exist are searched, in this order
    AgeFrom ageFrom = AgeFrom::modification;
    std::filesystem::path buildCache;
    std::string simulatorTool;
    std::vector<std::string> containerTools; ///< as the machine knows them; the first that is there is used
    /// Where the container tool is held to an engine of this computer; no value where it finds one by itself.
    std::optional<ContainerSettings> containers;
};

} // namespace swabby
