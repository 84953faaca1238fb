#pragma once

#include "platform/ApplicationSource.h"

#include <filesystem>
#include <string>
#include <vector>

namespace swabby {

/// Whether application images are called so.
bool isImageName(const std::filesystem::path &path);

/// "blender", "blender4" and "blender-4.0" are called after "blender", "blender-pictures" is not. Whatever
/// the case; nothing is called after an empty name.
bool isCalledAfter(const std::string &text, const std::string &name);

/// The same with anything behind the name that is no letter: "Blender-x86_64" begins with "blender",
/// "Blenders" does not.
bool beginsWithName(const std::string &text, const std::string &name);

/// Whether that menu entry starts a program in the folder, or that file. Blocks for the disk.
bool startsFrom(const std::filesystem::path &application, const std::filesystem::path &entry,
                const std::vector<std::string> &searched);

/// Where what is installed can be told by its name. One that is missing has nothing.
struct InstalledNames {
    std::vector<std::filesystem::path> entryFolders;   ///< of menu entries, the user's own and everybody's
    std::vector<std::filesystem::path> imageFolders;   ///< of application images
    std::vector<std::filesystem::path> packageFolders; ///< with a file or folder called after each package
    std::vector<std::string> searched;                 ///< where entries find their programs
};

/// Whether another entry, image or package goes by the application's name or identifier, and so may use what
/// that leaves behind. An image beside the application counts too. Blocks for the disk.
bool hasNamesake(const FoundApplication &application, const InstalledNames &installed);

} // namespace swabby
