#include "cleanup/Untouched.h"

#include "cleanup/ProjectFolder.h"
#include "cleanup/SideBySide.h"
#include "engine/WholeNumber.h"
#include "platform/posix/LastTouch.h"

#include <algorithm>
#include <map>

namespace swabby {
namespace {

namespace fs = std::filesystem;

constexpr std::int64_t nanosecondsOfASecond = 1'000'000'000;
constexpr std::int64_t secondsOfADay = 86'400;

/// What somebody would touch who still needs it.
fs::path livePart(const DeepScanItem &item)
{
    return item.category == DeepScanCategory::nodeModules ? workFolder(item.path.parent_path(), item.foundIn)
                                                          : item.path;
}

} // namespace

std::int64_t daysBetween(std::int64_t nanoseconds, double now)
{
    // The whole seconds apart: together they have more digits than a double.
    const std::int64_t seconds = nanoseconds / nanosecondsOfASecond;
    const auto rest = static_cast<double>(nanoseconds % nanosecondsOfASecond) / nanosecondsOfASecond;
    return wholeNumber((now - static_cast<double>(seconds) - rest) / secondsOfADay);
}

std::vector<DeepScanItem> untouched(const Search &search, std::vector<DeepScanItem> items, std::int64_t days)
{
    const auto isYoung = [days](const DeepScanItem &item) { return days != anyAge && item.daysOld < days; };
    std::erase_if(items, isYoung);
    if (search.machine.cleanup.ageFrom == AgeFrom::modification)
        return items;

    const double now = search.machine.clock->now();
    TouchLimits limits;
    if (days != anyAge)
        limits.latestNanoseconds = (wholeNumber(now) + 1 - days * secondsOfADay) * nanosecondsOfASecond;
    std::vector<fs::path> parts;
    std::transform(items.begin(), items.end(), std::back_inserter(parts), livePart);
    std::map<fs::path, std::optional<std::int64_t>> touches; // the packages of a project share its
    for (const fs::path &part : parts)
        touches[part];
    sideBySide(touches.size(), [&](std::size_t index) {
        auto &[part, touch] = *std::next(touches.begin(), static_cast<std::ptrdiff_t>(index));
        touch = lastTouch(part, limits, search.control.stop);
    });

    std::vector<DeepScanItem> old;
    for (std::size_t index = 0; index < items.size(); ++index) {
        const std::optional<std::int64_t> touch = touches.at(parts[index]);
        if (!touch)
            continue;
        items[index].daysOld = daysBetween(*touch, now);
        if (!isYoung(items[index]))
            old.push_back(std::move(items[index]));
    }
    return old;
}

} // namespace swabby
