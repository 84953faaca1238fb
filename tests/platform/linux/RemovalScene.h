#pragma once

#include "platform/linux/LinuxDisposal.h"
#include "platform/machinefolder/FolderDisposal.h"
#include "support/RandomTree.h"

#include <memory>

namespace swabby {

namespace fs = std::filesystem;

enum class Way { deleteOutright, moveToTrash, emptyFolder };
constexpr Way everyWay[] = {Way::deleteOutright, Way::moveToTrash, Way::emptyFolder};

/// A place to remove things in, with either kind of disposal: DIR/home is what may be removed from, and
/// DIR/home/data or DIR/home/.Trash is where the Trash is.
struct Scene {
    explicit Scene(bool isMachineFolder, const fs::path &place = fs::temp_directory_path()) : ground(place)
    {
        fs::create_directories(home());
        growOutside(ground / "outside");
        if (isMachineFolder)
            disposal = std::make_unique<FolderDisposal>(machine(), std::vector<fs::path>(), events);
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
    EventLog events{QString::fromStdString((ground / "machine/events.jsonl").native())};
    std::unique_ptr<Disposal> disposal;
    std::vector<TrashedItem> trashed;
};

} // namespace swabby
