#include "platform/mactools/MacApplicationSource.h"

#include "platform/FolderListing.h"
#include "platform/Utf8.h"
#include "platform/mactools/ApplicationBundle.h"
#include "platform/mactools/PropertyList.h"

#include <QtCore/QFile>
#include <QtCore/QFileInfo>

namespace swabby {
namespace {

constexpr std::string_view suffix = ".app";

std::optional<BundleFacts> factsOf(const std::filesystem::path &bundle)
{
    const std::string path = (bundle / "Contents/Info.plist").native();
    const QString name = QFile::decodeName(QByteArray::fromStdString(path));
    QFile file(name);
    // Opening a pipe would wait for its writer.
    if (!QFileInfo(name).isFile() || !file.open(QIODevice::ReadOnly))
        return std::nullopt;
    return parseBundleFacts(file.read(largestPropertyList + 1));
}

} // namespace

std::vector<FoundApplication> MacApplicationSource::applications()
{
    std::vector<FoundApplication> found;
    addFolder(m_root / "Applications", found);
    addFolder(m_home / "Applications", found);
    return found;
}

void MacApplicationSource::addFolder(const std::filesystem::path &folder,
                                     std::vector<FoundApplication> &found) const
{
    for (const std::filesystem::path &bundle : childrenOf(folder)) {
        const std::string file = bundle.filename().native();
        if (!file.ends_with(suffix))
            continue;
        const std::optional<BundleFacts> facts = factsOf(bundle);
        if (!facts || facts->identifier == m_ownBundleId)
            continue;
        found.push_back({.path = bundle,
                         .name = facts->name.value_or(textOf(file.substr(0, file.size() - suffix.size()))),
                         .bundleId = facts->identifier,
                         .foundIn = folder});
    }
}

std::vector<LeftoverPlace> MacApplicationSource::leftoverPlaces(const FoundApplication &application) const
{
    enum class By { name, bundleId };
    static constexpr struct {
        const char *folder;
        By by;
        const char *ending;
        const char *description;
    } table[] = {
        {"Caches", By::bundleId, "", "Cached data"},
        {"Application Support", By::name, "", "Support files"},
        {"Preferences", By::bundleId, ".plist", "Preferences"},
        {"Saved Application State", By::bundleId, ".savedState", "Saved window state"},
        {"Logs", By::name, "", "Log files"},
        {"HTTPStorages", By::bundleId, "", "Website data"},
        {"WebKit", By::bundleId, "", "Web view cache"},
        {"Containers", By::bundleId, "", "Sandboxed app data"},
    };
    std::vector<LeftoverPlace> places;
    for (const auto &row : table)
        if (const QString &word = row.by == By::name ? application.name : application.bundleId;
            isOneFileName(word))
            places.push_back({.folder = m_home / "Library" / row.folder,
                              .name = word.toStdString() + row.ending,
                              .description = QString::fromLatin1(row.description)});
    return places;
}

} // namespace swabby
