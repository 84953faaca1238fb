#include "cleanup/DiskUsage.h"

#include "cleanup/SideBySide.h"
#include "platform/FolderListing.h"
#include "platform/TextScan.h"
#include "platform/Utf8.h"

#include <mutex>

namespace swabby {

std::int64_t parseDiskUsage(std::string_view text)
{
    constexpr std::string_view separators = "\t ";
    const std::size_t begin = text.find_first_not_of(separators);
    if (begin == std::string_view::npos)
        return 0;
    text.remove_prefix(begin);
    std::string_view piece = text.substr(0, text.find_first_of(separators));
    if (piece.size() > 1 && piece.front() == '+' && piece[1] != '-')
        piece.remove_prefix(1);
    constexpr std::int64_t kibibyte = 1024;
    std::int64_t bytes = 0;
    const auto kibibytes = integerOf<std::int64_t>(piece);
    if (!kibibytes || __builtin_mul_overflow(*kibibytes, kibibyte, &bytes))
        return 0;
    return bytes;
}

std::int64_t directorySize(Shell &shell, const std::filesystem::path &path, const StopToken &stop)
{
    // The tool repeats the path, so its text is UTF-8 when that is.
    const ToolOutput output = isUtf8(path.native()) ? ToolOutput::standardOutput : ToolOutput::fileNames;
    const auto text = shell.run("/usr/bin/du", {"-sk", path.native()}, output, stop);
    return text ? parseDiskUsage(*text) : 0;
}

std::vector<std::int64_t> directorySizes(const Search &search,
                                         const std::vector<std::filesystem::path> &paths)
{
    std::vector<std::int64_t> sizes(paths.size(), 0);
    std::mutex mutex;
    ScanProgress progress = {.what = {}, .total = static_cast<std::int64_t>(paths.size())};
    sideBySide(paths.size(), [&](std::size_t index) {
        sizes[index] = directorySize(*search.machine.shell, paths[index], search.control.stop);
        const std::scoped_lock guard(mutex);
        progress.what = textOf(paths[index].filename().native());
        ++progress.done;
        search.control.report(progress);
    });
    return sizes;
}

std::vector<std::filesystem::path> partsThatMayGo(const std::filesystem::path &folder,
                                                  const ExcludeList &excludes)
{
    if (!excludes.covers(folder))
        return {folder};
    std::vector<std::filesystem::path> parts;
    for (const std::filesystem::path &child : childrenOf(folder))
        if (!excludes.covers(child))
            parts.push_back(child);
    return parts;
}

} // namespace swabby
