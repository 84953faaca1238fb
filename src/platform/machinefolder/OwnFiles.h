#pragma once

#include <QtCore/QJsonObject>
#include <QtCore/QString>

#include <filesystem>

namespace swabby {

// What Swabby itself keeps in a machine folder. The folder may come from somebody else: no link in it leads
// Swabby to a file outside, and no pipe makes it wait.

/// Whether the way from the folder down to the path holds no link, as far as it is there.
bool isWithoutLinks(const std::filesystem::path &folder, const std::filesystem::path &below);

/// Whether a file of that name may be written: there is none yet, or a regular one.
bool isOwnFile(const QString &path);

/// The object in a regular file of at most a megabyte; empty when it holds none.
QJsonObject ownObject(const QString &path);

} // namespace swabby
