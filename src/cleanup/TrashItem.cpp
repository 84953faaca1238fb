#include "cleanup/TrashItem.h"

#include "cleanup/CacheCleaner.h"

#include <algorithm>

namespace swabby {

std::optional<RemovableItem> findTrash(const Search &search)
{
    const auto found = CacheCleaner::scanTrash(search);
    return found.empty() ? std::nullopt : std::optional(RemovableItem::of(found.front()));
}

bool isTrash(const RemovableItem &item)
{
    const auto *entry = std::get_if<CacheEntry>(&item.kind);
    return entry != nullptr && entry->trash != nullptr;
}

void replaceTrash(std::vector<RemovableItem> &items, const std::optional<RemovableItem> &trash)
{
    const auto before = std::ranges::find_if(items, isTrash);
    if (!trash)
        std::erase_if(items, isTrash);
    else if (before == items.end())
        items.push_back(*trash);
    else
        *before = *trash;
}

} // namespace swabby
