#include "platform/mactools/MacProgramIcons.h"

#include "platform/ApplicationSource.h"
#include "platform/FolderListing.h"
#include "platform/mactools/ApplicationBundle.h"
#include "platform/mactools/IconFile.h"
#include "platform/mactools/PropertyList.h"
#include "platform/posix/SmallFile.h"

#include <optional>

namespace swabby {
namespace {

namespace fs = std::filesystem;

/// Bundles lie in bundles, but not in so many.
constexpr std::size_t deepestBundle = 4;

/// Without links; no value when there is nothing.
std::optional<fs::path> realPath(const fs::path &path)
{
    std::error_code problem;
    fs::path real = fs::canonical(path, problem);
    return problem ? std::nullopt : std::optional(std::move(real));
}

/// Somebody else wrote the name into the bundle: it leads nowhere but to a file in there.
QByteArray pictureIn(const fs::path &bundle, int pixels)
{
    const QByteArray facts = smallFile(bundle / "Contents/Info.plist", largestPropertyList);
    QString name = parseBundleIcon(facts).value_or(QString());
    if (!isOneFileName(name))
        return {};
    if (!name.endsWith(QLatin1String(".icns")))
        name += QStringLiteral(".icns");
    const auto file = realPath(bundle / "Contents/Resources" / name.toStdString());
    if (!file || !isUnder(*file, bundle))
        return {};
    return pngOfIconFile(smallFile(*file, largestIconFile), pixels);
}

} // namespace

fs::path MacProgramIcons::place(const fs::path &path) const
{
    if (!path.is_absolute() || isUnder(path, m_root) || isUnder(path, m_home))
        return path;
    return m_root / path.relative_path();
}

std::vector<fs::path> MacProgramIcons::bundlesOf(const IconOwner &owner) const
{
    constexpr auto ending = ".app";
    std::vector<fs::path> bundles;
    if (owner.program.empty() && isOneFileName(owner.application))
        for (const fs::path &folder : {m_root / "Applications", m_home / "Applications"})
            bundles.push_back(folder / (owner.application.toStdString() + ending));
    if (!owner.program.is_absolute())
        return bundles;
    for (fs::path folder = place(owner.program); folder.has_relative_path(); folder = folder.parent_path())
        if (folder.extension() == ending && bundles.size() < deepestBundle)
            bundles.push_back(folder);
    return bundles;
}

QByteArray MacProgramIcons::picture(const IconOwner &owner, const IconRequest &request)
{
    const fs::path root = realPath(m_root).value_or(m_root);
    const fs::path home = realPath(m_home).value_or(m_home);
    for (const fs::path &folder : bundlesOf(owner)) {
        const auto bundle = realPath(folder);
        if (!bundle || !(isUnder(*bundle, root) || isUnder(*bundle, home)))
            continue;
        if (QByteArray found = pictureIn(*bundle, request.pixels); !found.isEmpty())
            return found;
    }
    return {};
}

} // namespace swabby
