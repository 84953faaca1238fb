#include "cleanup/duplicates/Reading.h"

#include "cleanup/SideBySide.h"
#include "platform/Utf8.h"

#include <algorithm>
#include <thread>
#include <vector>

namespace swabby {

ReadMeter::ReadMeter(const ScanControl &control, std::int64_t totalBytes)
    : m_control(control),
      m_total(totalBytes),
      // Fine enough for a bar, and often enough on a slow disk.
      m_step(std::clamp<std::int64_t>(totalBytes / 500, 1, 16 << 20))
{
}

void ReadMeter::count(std::int64_t bytes, const std::string &fileName)
{
    if (stopRequested())
        return; // what is passed over now was not read
    const std::int64_t done = m_done.fetch_add(bytes, std::memory_order_relaxed) + bytes;
    if (m_control.progress && done - m_reported.load(std::memory_order_relaxed) >= m_step)
        report(fileName);
}

void ReadMeter::finish()
{
    report({});
}

void ReadMeter::report(const std::string &fileName)
{
    const std::lock_guard lock(m_reporting);
    const std::int64_t done = m_done.load(std::memory_order_relaxed);
    if (!fileName.empty() && done - m_reported < m_step)
        return; // another worker was quicker
    m_reported = done;
    m_control.report({textOf(fileName), done, m_total});
}

void onAllCores(std::size_t count, const StopToken &stop,
                const std::function<void(std::size_t number, ReadBuffer &buffer)> &work)
{
    constexpr std::size_t mostWorkers = 8; // more would only wait for the same disk, each with its buffer
    const std::size_t workers =
        std::min({count, mostWorkers, std::max<std::size_t>(std::thread::hardware_concurrency(), 1)});
    std::atomic<std::size_t> next = 0;
    sideBySide(workers, [&](std::size_t /*worker*/) {
        ReadBuffer buffer;
        for (std::size_t number = next++; number < count && !stop.stopRequested(); number = next++)
            work(number, buffer);
    });
}

} // namespace swabby
