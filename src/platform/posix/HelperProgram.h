#pragma once

#include "platform/posix/Descriptor.h"
#include "platform/posix/HelperTask.h"

#include <chrono>
#include <mutex>
#include <optional>
#include <string>
#include <string_view>

#include <sys/types.h>

namespace swabby {

/// A program of Swabby's own, beside this library, for what other people's files could end or starve. It
/// answers each request in a process of its own with limits, is started with the first request and given no
/// environment.
class HelperProgram {
public:
    explicit HelperProgram(std::string name) : m_name(std::move(name)) {}
    ~HelperProgram() { end(); }
    HelperProgram(const HelperProgram &) = delete;
    HelperProgram &operator=(const HelperProgram &) = delete;

    /// The whole answer; no value when the process ended or reached a limit before it began one, or the
    /// program is not there, which one word on standard error says. Blocks; any thread may ask, several at
    /// once.
    std::optional<std::string> ask(std::string_view request, std::chrono::milliseconds processorTime);

    /// Starts the program ahead of the first request: it keeps the priority of the thread that starts it.
    /// Waits for nobody, and does nothing while another thread starts or ends it.
    void begin();
    /// Ends the program and what it works at; the next request starts it again. Waits for its end alone.
    void end();

private:
    bool hand(int descriptor, const HelperTask &task);
    bool start();
    void stop();

    const std::string m_name;
    std::mutex m_mutex;
    Descriptor m_socket;
    pid_t m_process = -1;
    bool m_hasComplained = false;
};

} // namespace swabby
