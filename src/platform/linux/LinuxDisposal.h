#pragma once

#include "platform/Clock.h"
#include "platform/Disposal.h"

namespace swabby {

struct TrashFolder;

/// Removal on Linux, with the Trash of freedesktop.org: the user's own for what lies on its disk, the one at
/// the top of its mount for everything else. Nothing is ever copied from disk to disk. The clock has to
/// outlive it.
class LinuxDisposal final : public Disposal {
public:
    LinuxDisposal(std::filesystem::path dataHome, const Clock &clock)
        : m_dataHome(std::move(dataHome)), m_clock(clock)
    {
    }

    std::optional<TrashedItem> moveToTrash(const RemovalTarget &target,
                                           const BeforeMove &beforeMove) override;
    bool putBack(const TrashedItem &item) override;
    bool deleteOutright(const RemovalTarget &target) override;
    bool emptyFolder(const RemovalTarget &folder, const MustStay &mustStay) override;
    TrashListing listTrash(const std::filesystem::path &path, const MustStay &mustStay) override;
    bool emptyTrash(const RemovalTarget &target, const TrashListing &listed,
                    const MustStay &mustStay) override;

private:
    std::filesystem::path m_dataHome;
    const Clock &m_clock;
};

} // namespace swabby
