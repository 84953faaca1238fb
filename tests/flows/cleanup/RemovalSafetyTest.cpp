#include "cleanup/FullMac.h"
#include "cleanup/PutBackRecord.h"
#include "cleanup/RemovalRun.h"
#include "cleanup/Search.h"
#include "support/RandomTree.h"

#include <QtTest/QTest>

#include <random>

using namespace swabby;

namespace {

namespace fs = std::filesystem;

bool isUnder(const std::string &path, const std::string &folder)
{
    return path == folder || path.starts_with(folder + '/');
}

/// The picture without what Swabby and the run itself write, and without the times of folders.
TreePicture relevant(const fs::path &machine)
{
    TreePicture picture = pictureOf(machine);
    std::erase_if(picture, [](const auto &entry) {
        return isUnder(entry.first, "events.jsonl") || isUnder(entry.first, "home/.Trash") ||
               isUnder(entry.first, "home/Library/Application Support/Swabby");
    });
    for (auto &[path, line] : picture)
        if (line.starts_with('4')) // a folder: its rights and its owner
            line.resize(line.find(' ', line.find(' ') + 1));
    return picture;
}

/// A Mac with a random lot of everything, and wild trees where the caches, downloads and projects are.
void grow(const FullMac &mac, const fs::path &outside, std::mt19937 &random)
{
    const fs::path home = mac.homePath();
    for (int file = 0; file < 12; ++file) {
        const fs::path folder = home / (random() % 2 ? "Downloads" : "Desktop");
        writeBytes(folder / ("file" + std::to_string(file)), std::string(5'000, char('a' + random() % 4)));
    }
    for (const char *folder : {"Library/Caches/pip", "Library/Caches/odd", "Projects/old/node_modules"})
        growRandomTree(home / folder / "wild", outside, std::uint32_t(random()));
    growRandomTree(home / "Documents/wild", outside, std::uint32_t(random()));
    fs::create_symlink(outside, home / "Downloads/link");
    fs::create_symlink(outside, home / "Library/Caches/link");
    mac.age(u"Projects/old"_qs, 40 * Clutter::day);
}

/// The places that removing the item may change, relative to the machine.
std::vector<std::string> placesOf(const RemovableItem &item, const fs::path &machine)
{
    std::vector<fs::path> paths;
    if (const auto *cache = std::get_if<CacheEntry>(&item.kind))
        paths = {cache->path};
    else if (const auto *group = std::get_if<DuplicateGroup>(&item.kind))
        paths.assign(group->paths.begin() + 1, group->paths.end());
    else if (const auto *found = std::get_if<DeepScanItem>(&item.kind))
        paths = {found->path};
    else if (const auto *app = std::get_if<AppUninstall>(&item.kind)) {
        paths = {app->app.path};
        for (const AppLeftover &leftover : app->leftovers)
            paths.push_back(leftover.path);
    } else if (std::holds_alternative<DerivedData>(item.kind))
        paths = {machine / "home/Library/Developer/Xcode/DerivedData"};
    std::vector<std::string> places;
    places.reserve(paths.size());
    for (const fs::path &path : paths)
        places.push_back(path.lexically_relative(machine).native());
    return places;
}

/// Empty, or what went wrong.
std::string removeAndPutBack(std::uint32_t seed)
{
    std::mt19937 random(seed);
    const Ground ground;
    growOutside(ground / "outside");
    const FullMac mac;
    // Trees so deep that only the ground takes them away again.
    const struct Keeper {
        ~Keeper() { fs::rename(from, to); }
        fs::path from;
        fs::path to;
    } keeper = {mac.homePath(), ground / "home"};
    grow(mac, ground / "outside", random);
    const fs::path folder = mac.folder().toStdString();
    const auto machine = mac.open();
    const TreePicture outside = pictureOf(ground / "outside");
    const TreePicture before = relevant(folder);

    std::vector<RemovableItem> confirmed;
    std::vector<std::string> places;
    std::vector<std::string> trashPlaces;
    std::vector<std::string> deleted;
    for (const RemovableItem &item : findEverything(Search::on(*machine, {}))) {
        if (random() % 2)
            continue;
        confirmed.push_back(item);
        const bool isDeleted =
            std::holds_alternative<CacheEntry>(item.kind) || std::holds_alternative<DerivedData>(item.kind);
        for (const std::string &place : placesOf(item, folder)) {
            places.push_back(place);
            (isDeleted ? deleted : trashPlaces).push_back(place);
        }
    }
    const RemovalOutcome outcome = removeItems(confirmed, {}, *machine, {});
    const TreePicture after = relevant(folder);

    const auto change = [](TreePicture was, TreePicture is, const std::vector<std::string> &left) {
        for (TreePicture *picture : {&was, &is})
            std::erase_if(*picture, [&](const auto &entry) {
                return std::ranges::any_of(left,
                                           [&](const auto &place) { return isUnder(entry.first, place); });
            });
        return difference(was, is);
    };
    if (const std::string changed = change(before, after, places); !changed.empty())
        return "changed: " + changed;
    if (!outcome.left.empty())
        return std::to_string(outcome.left.size()) + " items stayed";
    // Only what is emptied keeps its folder.
    for (const std::string &place : trashPlaces)
        if (after.contains(place))
            return "still there: " + place;
    for (const RemovableItem &item : confirmed)
        if (const auto *group = std::get_if<DuplicateGroup>(&item.kind);
            group && bytesOf(group->paths.front()).size() != 5'000)
            return "no copy left of " + group->paths.front().native();

    const PutBackResult result =
        PutBackRecord(machine->places.applicationData).putBackAll(*machine->disposal);
    if (result != PutBackResult{int(outcome.trashed.size()), 0})
        return "put back " + std::to_string(result.restored) + ", left " + std::to_string(result.left);
    if (const std::string changed = change(before, relevant(folder), deleted); !changed.empty())
        return "not as before: " + changed;
    if (const std::string changed = change(outside, pictureOf(ground / "outside"), {}); !changed.empty())
        return "outside: " + changed;
    return {};
}

} // namespace

class RemovalSafetyTest : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void onlyWhatWasConfirmedGoesAndComesBack()
    {
        constexpr std::uint32_t seeds = 100;
        for (std::uint32_t seed = 0; seed < seeds; ++seed)
            if (const std::string problem = removeAndPutBack(seed); !problem.empty())
                QFAIL(qPrintable(u"seed %1: "_qs.arg(seed) + QString::fromStdString(problem)));
    }
};

QTEST_GUILESS_MAIN(RemovalSafetyTest)
#include "RemovalSafetyTest.moc"
