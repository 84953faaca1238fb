#pragma once

#include "cleanup/DeepScanItem.h"
#include "cleanup/Search.h"

#include <string_view>
#include <vector>

/// Finds large things that their owner has most likely forgotten. Every call blocks for the disk and for
/// tools: background work only.
namespace swabby::DeepScanner {

/// Dependency folders of old projects, then installers, then old downloads, all of them largest first. One
/// that two rules find is there twice.
std::vector<DeepScanItem> scan(const Search &search);

/// The first twenty dependency folders that the search of a project folder printed. A line that names none
/// in there does not count.
std::vector<std::filesystem::path> parseProjectSearch(std::string_view text,
                                                      const std::filesystem::path &root);

} // namespace swabby::DeepScanner
