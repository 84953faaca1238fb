#pragma once

#include "cleanup/RemovableItem.h"
#include "cleanup/Search.h"

#include <optional>
#include <vector>

/// The Trash is the one thing found that grows by what is removed elsewhere.
namespace swabby {

/// As it is now; none when it holds hardly anything. Blocks for the disk.
std::optional<RemovableItem> findTrash(const Search &search);

bool isTrash(const RemovableItem &item);

/// Puts the Trash as it is now in the place of what was found of it before, or behind everything when that
/// was nothing.
void replaceTrash(std::vector<RemovableItem> &items, const std::optional<RemovableItem> &trash);

} // namespace swabby
