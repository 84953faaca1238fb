#include "platform/linux/Volumes.h"

#include "platform/Utf8.h"

#include <sys/stat.h>
#include <sys/statvfs.h>

#include <algorithm>
#include <cstdlib>
#include <filesystem>
#include <optional>

namespace swabby {
namespace {

std::optional<dev_t> deviceOf(const std::filesystem::path &path)
{
    struct stat status = {};
    return ::stat(path.c_str(), &status) == 0 ? std::optional(status.st_dev) : std::nullopt;
}

/// The topmost folder of the volume that the path lies on.
std::filesystem::path mountPointOf(const std::string &name)
{
    std::error_code failed;
    std::filesystem::path path = std::filesystem::canonical(name, failed);
    const auto device = deviceOf(path);
    while (path.has_relative_path() && deviceOf(path.parent_path()) == device)
        path = path.parent_path();
    return path;
}

QString mountPointIn(const Volume &volume)
{
    return volume.capacity.mountPoint;
}

double freeShare(const Volume &volume)
{
    return static_cast<double>(volume.capacity.freeBytes) / static_cast<double>(volume.capacity.totalBytes);
}

/// Whether what is asked one after the other, while programs write, is the same room.
bool isSameRoom(const VolumeCapacity &one, const VolumeCapacity &other)
{
    return one.totalBytes == other.totalBytes &&
           std::abs(one.freeBytes - other.freeBytes) <= one.totalBytes / 100;
}

} // namespace

std::vector<Volume> volumesOf(std::span<const std::string> paths)
{
    std::vector<Volume> volumes;
    for (const std::string &path : paths) {
        const QString mountPoint = textOf(mountPointOf(path).native());
        struct statvfs figures = {};
        if (std::ranges::count(volumes, mountPoint, mountPointIn) > 0 ||
            ::statvfs(path.c_str(), &figures) != 0)
            continue;
        const auto bytes = [&](fsblkcnt_t blocks) {
            return static_cast<std::int64_t>(blocks * figures.f_frsize);
        };
        const std::int64_t used = bytes(figures.f_blocks - std::min(figures.f_bfree, figures.f_blocks));
        if (used + bytes(figures.f_bavail) <= 0)
            continue; // the kernel's own, which hold nothing
        volumes.push_back({{.freeBytes = bytes(figures.f_bavail),
                            .totalBytes = used + bytes(figures.f_bavail),
                            .mountPoint = mountPoint},
                           (figures.f_flag & ST_RDONLY) != 0});
    }
    return volumes;
}

VolumeCapacity fullestOf(std::vector<Volume> volumes)
{
    if (std::ranges::any_of(volumes, [](const Volume &volume) { return !volume.isReadOnly; }))
        std::erase_if(volumes, [](const Volume &volume) { return volume.isReadOnly; });
    if (volumes.empty())
        return {};
    VolumeCapacity fullest = std::ranges::min_element(volumes, {}, freeShare)->capacity;
    // Folders of one pool may look like volumes of their own, but it is the same room that fills up.
    if (std::ranges::all_of(volumes,
                            [&](const Volume &volume) { return isSameRoom(volume.capacity, fullest); }))
        fullest.mountPoint.clear();
    return fullest;
}

} // namespace swabby
