#pragma once

#include "platform/Clock.h"

#include <atomic>

namespace swabby {

/// A described machine's fixed clock: it stands still until it is moved on.
class FolderClock final : public Clock {
public:
    explicit FolderClock(double now) : m_now(now) {}

    double now() const override { return m_now; }
    bool isFixed() const override { return true; }
    void advance(double seconds) override { m_now = m_now + seconds; }

private:
    std::atomic<double> m_now;
};

} // namespace swabby
