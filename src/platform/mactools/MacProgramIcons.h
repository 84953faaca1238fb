#pragma once

#include "platform/ProgramIcons.h"

#include <vector>

namespace swabby {

/// The icon files of application bundles.
class MacProgramIcons final : public ProgramIcons {
public:
    /// The root is empty where the machine is this one. Neither a program nor its icon is looked for anywhere
    /// but under these two folders.
    MacProgramIcons(std::filesystem::path root, std::filesystem::path home)
        : m_root("/" / root), m_home(std::move(home))
    {
    }

    /// The innermost bundle that has an icon counts: a helper often has none of its own. Without a program,
    /// the application of that name in the applications folders.
    QByteArray picture(const IconOwner &owner, const IconRequest &request) override;

private:
    std::vector<std::filesystem::path> bundlesOf(const IconOwner &owner) const;
    /// Where a path that a tool printed leads to.
    std::filesystem::path place(const std::filesystem::path &path) const;

    const std::filesystem::path m_root;
    const std::filesystem::path m_home;
};

} // namespace swabby
