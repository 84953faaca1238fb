#pragma once

#include <chrono>
#include <memory>

namespace swabby {

/// Tells work to stop. A copy is cheap; a default one never stops. Waiting work watches descriptor(),
/// which becomes readable for good once the stop was requested.
class StopToken {
public:
    StopToken() = default;

    bool stopRequested() const;
    /// A descriptor for poll(), or -1 for a token that never stops.
    int descriptor() const;
    /// Waits that long unless stopped before; true when the whole time has passed.
    bool waitFor(std::chrono::milliseconds time) const;

private:
    friend class StopSource;
    struct Pipe;
    std::shared_ptr<Pipe> m_pipe;
};

/// The side that requests the stop.
class StopSource {
public:
    StopSource();

    StopToken token() const { return m_token; }
    /// From any thread, any number of times.
    void requestStop();

private:
    StopToken m_token;
};

} // namespace swabby
