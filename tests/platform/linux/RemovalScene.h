#pragma once

#include "platform/linux/LinuxDisposal.h"
#include "platform/machinefolder/FolderDisposal.h"
#include "platform/macparts/MacDisposal.h"
#include "platform/posix/EntryMove.h"
#include "support/RandomTree.h"

#include <memory>

namespace swabby {

namespace fs = std::filesystem;

enum class Way { deleteOutright, moveToTrash, emptyFolder };
constexpr Way everyWay[] = {Way::deleteOutright, Way::moveToTrash, Way::emptyFolder};

enum class Kind { thisComputer, machineFolder, mac };
constexpr Kind everyKind[] = {Kind::thisComputer, Kind::machineFolder, Kind::mac};

/// What a Mac does with a path, whatever lies there by then.
inline std::optional<fs::path> toTrash(const fs::path &path, const fs::path &trash)
{
    fs::create_directories(trash);
    const Descriptor from = holdFolder(path.parent_path());
    const Descriptor to = holdFolder(trash);
    const auto what = identityIn(from.number(), path.filename());
    for (int attempt = 1; what; ++attempt) {
        const std::string name = numberedName(path.filename(), attempt, 255);
        const auto result = moveEntry({from.number(), path.filename()}, {to.number(), name}, *what);
        if (result != MoveResult::nameTaken)
            return result == MoveResult::moved ? std::optional(trash / name) : std::nullopt;
    }
    return std::nullopt;
}

/// A place to remove things in, with any kind of disposal: DIR/home is what may be removed from, and
/// DIR/home/data or DIR/home/.Trash is where the Trash is.
struct Scene {
    explicit Scene(Kind kind, const fs::path &place = fs::temp_directory_path()) : ground(place)
    {
        fs::create_directories(home());
        growOutside(ground / "outside");
        if (kind == Kind::machineFolder)
            disposal =
                std::make_unique<FolderDisposal>(machine(), std::vector<fs::path>(), events, permissions);
        else if (kind == Kind::mac)
            disposal = std::make_unique<MacDisposal>(
                home() / ".Trash", [this](const fs::path &path) { return toTrash(path, home() / ".Trash"); },
                permissions);
        else
            disposal = std::make_unique<LinuxDisposal>(home() / "data", clock);
    }

    fs::path machine() const { return ground / "machine"; }
    fs::path home() const { return machine() / "home"; }
    fs::path tree() const { return home() / "tree"; }
    bool remove(Way way, const RemovalTarget &target)
    {
        switch (way) {
        case Way::deleteOutright:
            return disposal->deleteOutright(target);
        case Way::emptyFolder:
            return disposal->emptyFolder(target, {});
        case Way::moveToTrash:
            break;
        }
        const auto item = disposal->moveToTrash(target);
        if (item)
            trashed.push_back(*item);
        return item.has_value();
    }

    Ground ground;
    SystemClock clock;
    Permissions permissions;
    EventLog events{QString::fromStdString((ground / "machine/events.jsonl").native())};
    std::unique_ptr<Disposal> disposal;
    std::vector<TrashedItem> trashed;
};

} // namespace swabby
