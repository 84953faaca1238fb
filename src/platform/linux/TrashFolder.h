#pragma once

#include "platform/posix/Descriptor.h"

#include <filesystem>
#include <optional>
#include <string>
#include <vector>

namespace swabby {

/// One Trash as freedesktop.org describes it, its folders held open. None of them is a
/// link, and all belong to this user.
struct TrashFolder {
    std::filesystem::path path;      ///< for people and records
    std::filesystem::path topFolder; ///< where the paths of its records start; empty when they are absolute
    Descriptor folder;
    Descriptor files;
    Descriptor info;
};

/// The user's Trash in their data folder, made when it is missing. No value when it cannot be had.
std::optional<TrashFolder> homeTrash(const std::filesystem::path &dataHome);

/// The Trash for what lies on the same mount as a held folder: `.Trash/UID` at its top, when that is fit,
/// otherwise `.Trash-UID`, made when it is missing. No value when neither can be had.
std::optional<TrashFolder> trashOfMount(int folder);

/// A Trash that is there, by its path; it is the home Trash when it lies in that data folder. No value when
/// it is none of this user's.
std::optional<TrashFolder> existingTrash(const std::filesystem::path &path,
                                         const std::filesystem::path &dataHome);

/// The text of a record; empty when it cannot be read.
std::string recordIn(const TrashFolder &trash, const std::string &recordName);

/// Makes a record that was not there before, and writes it. False, with errno EEXIST when the name is taken;
/// nothing is left behind then.
bool writeRecord(const TrashFolder &trash, const std::string &recordName, const std::string &text);

} // namespace swabby
