#pragma once

#include "platform/ApplicationSource.h"

namespace swabby {

/// The bundles of the applications folders, the machine's first, then the user's own.
class MacApplicationSource final : public ApplicationSource {
public:
    /// The root is empty where the machine is this one. Our own bundle identifier is never listed.
    MacApplicationSource(std::filesystem::path root, std::filesystem::path home, QString ownBundleId)
        : m_root("/" / root), m_home(std::move(home)), m_ownBundleId(std::move(ownBundleId))
    {
    }

    std::vector<FoundApplication> applications() override;
    std::vector<LeftoverPlace> leftoverPlaces(const FoundApplication &application) const override;

private:
    void addFolder(const std::filesystem::path &folder, std::vector<FoundApplication> &found) const;

    const std::filesystem::path m_root;
    const std::filesystem::path m_home;
    const QString m_ownBundleId;
};

} // namespace swabby
