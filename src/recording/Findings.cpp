#include "recording/Findings.h"

#include "cleanup/Untouched.h"
#include "platform/FolderListing.h"
#include "recording/PropertyLists.h"

#include <QtCore/QCryptographicHash>

#include <algorithm>
#include <array>

namespace swabby {
namespace {

namespace fs = std::filesystem;

constexpr double secondsOfADay = 86'400;
constexpr double nanoseconds = 1e9;

/// What other systems leave, by its description, and where a Mac's application leaves the like.
constexpr struct {
    const char *description;
    const char *folder;
    const char *ending;
    bool isByName;
} leftoverPlaces[] = {
    {"Cached data", "Caches", "", false},
    {"Support files", "Application Support", "", true},
    {"Preferences", "Preferences", ".plist", false},
    {"Saved state", "Saved Application State", ".savedState", false},
    {"Sandboxed app data", "Containers", "", false},
};

/// What tells a file from any other of its length.
QByteArray markOf(const std::string &place)
{
    return QCryptographicHash::hash(QByteArray::fromStdString(place), QCryptographicHash::Sha256);
}

/// A free text as the name of one file.
std::string fileNameOf(QString text)
{
    return text.replace(QLatin1Char('/'), QLatin1Char(':')).toStdString();
}

} // namespace

void Findings::add(const RemovableItem &item)
{
    std::visit([this](const auto &found) { add(found); }, item.kind);
}

std::string Findings::placeOf(const fs::path &path)
{
    // Other systems let a person choose these.
    const std::pair<const fs::path &, const char *> folders[] = {{m_machine.cleanup.downloads, "Downloads"},
                                                                 {m_machine.cleanup.desktop, "Desktop"}};
    for (const auto &[folder, name] : folders)
        if (isUnder(path, folder)) {
            fs::path place = placeIn(std::string("home/").append(name));
            for (const fs::path &part : path.lexically_relative(folder))
                place /= m_rewriting.fileName(part);
            return place.native();
        }
    return m_rewriting.path(path);
}

/// Something of which only what it takes of the disk counts.
void Findings::addOccupied(const std::string &place, FileKind kind, std::int64_t size)
{
    constexpr std::int64_t kibibyte = 1024;
    if (kind == FileKind::folder)
        m_folder.addFolder(place);
    else
        m_folder.addFile(place);
    m_texts.addMissing("/usr/bin/du", {"-sk", place}, std::to_string(size / kibibyte) + '\t' + place + '\n');
}

void Findings::add(const CacheEntry &cache)
{
    const bool isTrash = cache.path == m_machine.cleanup.trash;
    const std::string place = isTrash ? placeIn("home/.Trash") : m_rewriting.path(cache.path);
    addOccupied(place, cache.identity.kind, cache.sizeBytes);
    if (!cache.trash)
        return;
    for (const ListedEntry &entry : cache.trash->items)
        m_folder.addFile(place + '/' + m_rewriting.fileName(entry.name));
}

/// When it was modified, or as long ago as it was counted: elsewhere an age counts from more than that.
double Findings::timeOf(const fs::path &path, std::int64_t days) const
{
    const double now = m_machine.clock->now();
    const auto identity = FileIdentity::of(path);
    if (identity && daysBetween(identity->modifiedNanoseconds, now) == days)
        return static_cast<double>(identity->modifiedNanoseconds) / nanoseconds;
    return now - secondsOfADay * (static_cast<double>(days) + 0.5);
}

void Findings::add(const DuplicateGroup &group)
{
    const QByteArray mark = markOf(placeOf(group.paths.front()));
    for (std::size_t index = 0; index < group.paths.size(); ++index) {
        const std::string place = placeOf(group.paths[index]);
        m_folder.addHollowFile(place, group.sizeBytes, mark);
        if (index < group.identities.size())
            m_folder.setTime(place,
                             static_cast<double>(group.identities[index].modifiedNanoseconds) / nanoseconds);
    }
}

void Findings::add(const DeepScanItem &item)
{
    const std::string place = placeOf(item.path);
    if (item.identity.kind == FileKind::folder)
        addOccupied(place, FileKind::folder, item.sizeBytes);
    else if (!m_folder.has(place))
        m_folder.addHollowFile(place, item.sizeBytes, markOf(place));
    const bool isOfProject = item.category == DeepScanCategory::nodeModules;
    m_folder.setTime(isOfProject ? place.substr(0, place.rfind('/')) : place,
                     timeOf(isOfProject ? item.path.parent_path() : item.path, item.daysOld));
}

void Findings::add(const AppUninstall &uninstall)
{
    const InstalledApp &app = uninstall.app;
    const QString name = m_rewriting.name(app.name);
    const QString id = m_rewriting.name(app.bundleID);
    const bool isBundle = app.path.extension() == ".app";
    const std::string place =
        isBundle ? m_rewriting.path(app.path) : placeIn("home/Applications/" + fileNameOf(name) + ".app");
    m_folder.addFile(place + "/Contents/Info.plist",
                     propertyList({{QStringLiteral("CFBundleIdentifier"), id},
                                   {QStringLiteral("CFBundleDisplayName"), name}}));
    addOccupied(place, FileKind::folder, app.sizeBytes);
    for (const AppLeftover &leftover : uninstall.leftovers) {
        const auto row = std::ranges::find_if(leftoverPlaces, [&](const auto &known) {
            return leftover.description == QLatin1String(known.description);
        });
        if (isUnder(leftover.path, m_machine.cleanup.home / "Library"))
            addOccupied(m_rewriting.path(leftover.path), leftover.identity.kind, leftover.sizeBytes);
        else if (row != std::end(leftoverPlaces))
            addOccupied(placeIn(std::string("home/Library/") + row->folder + '/' +
                                fileNameOf(row->isByName ? name : id) + row->ending),
                        leftover.identity.kind, leftover.sizeBytes);
    }
}

} // namespace swabby
