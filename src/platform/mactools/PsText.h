#pragma once

#include "platform/ProcessSurvey.h"

#include <string_view>

namespace swabby {

/// The lines of a `ps` listing that its sorted listings are cut to; the header is one of them.
inline constexpr int sortedListingLines = 50;

/// The rows of `ps -Ao pid,ppid,pcpu,pmem,rss,comm`, at most from the first maxLines lines. A line that is
/// no row (the header, half a line) is left out.
std::vector<ProcessRow> parseProcessRows(std::string_view text, int maxLines = -1);

/// The rows below the first line of an unsorted listing whose pid is wanted; the first of a pid wins.
std::vector<ProcessRow> parseMatchingRows(std::string_view text,
                                          const std::unordered_set<std::int32_t> &pids);

/// The rows of `ps -Ao pcpu,rss,comm`.
std::vector<ProcessWeight> parseWeights(std::string_view text);

/// What a person calls a command: its last path component, or all of it where there is none.
QString nameOfCommand(const QString &command);

} // namespace swabby
