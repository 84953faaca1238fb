#pragma once

namespace swabby {

/// The time of day, from outside, so that a week can pass in a millisecond in a test.
class Clock {
public:
    virtual ~Clock() = default;

    /// Seconds since 1970-01-01 00:00 UTC, with fractions. Never blocks.
    virtual double now() const = 0;

    /// Whether time stands still until somebody calls advance().
    virtual bool isFixed() const { return false; }

    /// Moves a fixed clock on by that many seconds; a running clock ignores it.
    virtual void advance(double seconds) { static_cast<void>(seconds); }
};

/// The computer's own clock.
class SystemClock final : public Clock {
public:
    double now() const override;
};

} // namespace swabby
