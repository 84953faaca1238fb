#include "cleanup/Overlaps.h"

#include "engine/SaturatedBytes.h"

#include <algorithm>
#include <map>
#include <optional>
#include <set>
#include <string_view>
#include <unordered_map>

namespace swabby {
namespace {

/// Something on the disk that goes, with what it takes there. Its path is its item's.
struct Part {
    std::string_view path;
    std::int64_t bytes = 0;
};

using Parts = std::vector<Part>;

void addParts(Parts &parts, const CacheEntry &entry)
{
    parts.push_back({entry.path.native(), entry.sizeBytes});
}

void addParts(Parts &parts, const DuplicateGroup &group)
{
    for (std::size_t copy = 1; copy < group.paths.size(); ++copy)
        parts.push_back({group.paths[copy].native(), group.sizeBytes});
}

void addParts(Parts &parts, const DeepScanItem &item)
{
    parts.push_back({item.path.native(), item.sizeBytes});
}

void addParts(Parts &parts, const AppUninstall &uninstall)
{
    parts.push_back({uninstall.app.path.native(), uninstall.app.sizeBytes});
    for (const AppLeftover &leftover : uninstall.leftovers)
        parts.push_back({leftover.path.native(), leftover.sizeBytes});
}

/// What a tool removes has no place that is known here.
template <typename Kind>
void addParts(Parts & /*parts*/, const Kind & /*kind*/)
{
}

void addParts(Parts &parts, const RemovableItem &item)
{
    std::visit([&](const auto &kind) { addParts(parts, kind); }, item.kind);
}

Parts partsOf(const std::vector<RemovableItem> &items)
{
    Parts parts;
    for (const RemovableItem &item : items)
        addParts(parts, item);
    return parts;
}

/// The folders that it lies in, innermost first.
std::vector<std::string_view> foldersOf(std::string_view path)
{
    std::vector<std::string_view> folders;
    for (auto end = path.rfind('/'); end != std::string_view::npos && end > 0; end = path.rfind('/')) {
        path = path.substr(0, end);
        folders.push_back(path);
    }
    return folders;
}

/// Places with what they take; of one that is given twice, the larger figure.
class MeasuredPlaces {
public:
    explicit MeasuredPlaces(const Parts &parts)
    {
        for (const Part &part : parts) {
            std::int64_t &bytes = m_bytes[part.path];
            bytes = std::max(bytes, part.bytes);
        }
    }

    bool hold(std::string_view path) const { return m_bytes.contains(path) || holdFolderOf(path); }
    bool holdFolderOf(std::string_view path) const
    {
        return std::ranges::any_of(foldersOf(path), [&](auto folder) { return m_bytes.contains(folder); });
    }
    /// Of those that lie in no other one.
    std::int64_t total() const
    {
        std::int64_t total = 0;
        for (const auto &[path, bytes] : m_bytes)
            if (!holdFolderOf(path))
                total = saturatedSum(total, bytes);
        return total;
    }
    /// The same for each folder that holds some.
    std::map<std::string, std::int64_t, std::less<>> totalsOfFolders() const
    {
        std::map<std::string, std::int64_t, std::less<>> totals;
        for (const auto &[path, bytes] : m_bytes)
            if (!holdFolderOf(path))
                for (const std::string_view folder : foldersOf(path)) {
                    std::int64_t &total = totals[std::string(folder)];
                    total = saturatedSum(total, bytes);
                }
        return totals;
    }

private:
    std::unordered_map<std::string_view, std::int64_t> m_bytes;
};

/// What became of the others.
struct Gone {
    explicit Gone(const std::vector<RemovableItem> &items)
        : places(partsOf(items)), bytesBelow(places.totalsOfFolders())
    {
        for (const RemovableItem &item : items)
            ids.insert(item.id);
    }

    std::set<QString> ids;
    MeasuredPlaces places;
    std::map<std::string, std::int64_t, std::less<>> bytesBelow;
};

/// A folder or file that was found as one, of which pieces may be gone.
template <typename Kind>
std::optional<RemovableItemKind> leftOf(const Kind &kind, const Gone &gone)
{
    if constexpr (requires { kind.path; }) {
        if (gone.places.hold(kind.path.native()))
            return std::nullopt;
        Kind left = kind;
        if (const auto below = gone.bytesBelow.find(kind.path.native()); below != gone.bytesBelow.end())
            left.sizeBytes = std::max<std::int64_t>(0, left.sizeBytes - below->second);
        return left;
    } else {
        return kind;
    }
}

std::optional<RemovableItemKind> leftOf(const DuplicateGroup &group, const Gone &gone)
{
    DuplicateGroup left = {{}, group.sizeBytes};
    for (std::size_t copy = 0; copy < group.paths.size(); ++copy) {
        if (gone.places.hold(group.paths[copy].native()))
            continue;
        left.paths.push_back(group.paths[copy]);
        if (copy < group.identities.size())
            left.identities.push_back(group.identities[copy]);
    }
    return left.paths.size() < 2 ? std::nullopt : std::optional<RemovableItemKind>(left);
}

} // namespace

std::int64_t bytesTogether(const std::vector<RemovableItem> &items)
{
    Parts parts;
    std::int64_t elsewhere = 0;
    for (const RemovableItem &item : items) {
        const std::size_t before = parts.size();
        addParts(parts, item);
        if (parts.size() == before)
            elsewhere = saturatedSum(elsewhere, item.sizeBytes);
    }
    return saturatedSum(MeasuredPlaces(parts).total(), elsewhere);
}

std::vector<RemovableItem> withoutGone(const std::vector<RemovableItem> &items,
                                       const std::vector<RemovableItem> &gone)
{
    if (gone.empty())
        return items;
    const Gone others(gone);
    std::vector<RemovableItem> left;
    for (const RemovableItem &item : items) {
        if (others.ids.contains(item.id))
            continue;
        const auto kind = std::visit([&](const auto &of) { return leftOf(of, others); }, item.kind);
        if (kind)
            left.push_back(*kind == item.kind ? item : RemovableItem::of(*kind));
    }
    return left;
}

} // namespace swabby
