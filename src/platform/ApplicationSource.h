#pragma once

#include <QtCore/QString>

#include <filesystem>
#include <vector>

namespace swabby {

/// An application that its user can remove.
struct FoundApplication {
    std::filesystem::path path; ///< what goes: a bundle, a folder of its own or one file
    QString name;
    QString bundleId;
    std::filesystem::path foundIn; ///< the folder it lies in
};

/// A place where an application may leave something.
struct LeftoverPlace {
    std::filesystem::path folder; ///< where every application has such a thing
    std::string name;             ///< this one's, directly in it
    QString description;
};

/// Lists the installed applications, and where they leave things.
class ApplicationSource {
public:
    virtual ~ApplicationSource() = default;

    /// In the order found, without Swabby itself. Blocks for the disk: background work only.
    virtual std::vector<FoundApplication> applications() = 0;

    /// By exact names only, in the order shown. A name that could reach past its folder has no places.
    /// Without those that something else installed may use. Blocks for the disk: background work only.
    virtual std::vector<LeftoverPlace> leftoverPlaces(const FoundApplication &application) const = 0;
};

/// Whether a name that somebody else chose can stand as one file in a folder: it is not empty, no way to
/// another folder, and came through as text whole.
bool isOneFileName(const QString &name);

} // namespace swabby
