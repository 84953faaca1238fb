#pragma once

#include "platform/ScanControl.h"

#include <atomic>
#include <cstddef>
#include <functional>
#include <memory>
#include <mutex>
#include <string>

namespace swabby {

/// The room a worker reads into. What all workers hold together is bounded, whatever the files' sizes.
class ReadBuffer {
public:
    static constexpr std::size_t size = 1024 * 1024;
    static constexpr std::size_t largestChunk = 128 * 1024; // two of them stay in a core's own cache

    ReadBuffer() : m_bytes(new char[size]) {}

    char *at(std::size_t offset) { return m_bytes.get() + offset; }

private:
    std::unique_ptr<char[]> m_bytes; // untouched until something is read
};

/// Counts what the workers have read, tells the person who waits, and passes on that they want no more.
class ReadMeter {
public:
    ReadMeter(const ScanControl &control, std::int64_t totalBytes);

    bool stopRequested() const { return m_control.stop.stopRequested(); }
    /// So much of the file is read or need not be. From any thread; nothing is told after a stop.
    void count(std::int64_t bytes, const std::string &fileName);
    /// Everything is read.
    void finish();

private:
    void report(const std::string &fileName);

    const ScanControl &m_control;
    const std::int64_t m_total;
    const std::int64_t m_step;
    std::atomic<std::int64_t> m_done = 0;
    std::atomic<std::int64_t> m_reported = 0;
    std::mutex m_reporting;
};

/// Calls work for every number below count, on all cores, this thread among them, until stopped. Each worker
/// has a buffer of its own. Comes back when the last one is done.
void onAllCores(std::size_t count, const StopToken &stop,
                const std::function<void(std::size_t number, ReadBuffer &buffer)> &work);

} // namespace swabby
