#pragma once

#include <QtCore/QString>

#include <cstdint>
#include <memory>
#include <optional>
#include <span>
#include <unordered_set>
#include <vector>

namespace swabby {

/// One running program as the system lists it, before anything is left out.
struct ProcessRow {
    std::int32_t pid = 0;
    std::int32_t parentPid = 0;
    double cpuPercent = 0; ///< of one processor, so several cores may exceed 100
    double memPercent = 0; ///< resident size as a share of the machine's memory
    std::uint64_t residentBytes = 0;
    QString path; ///< the whole command as the system shows it
    QString name; ///< what a person calls it
    /// What it is known by where its name says little: an interpreter's script, whose part it is. Empty for
    /// most.
    QString title{};
    bool isApp = false;
    /// The person's session stands on it: without it, it ends or can hardly be used.
    bool holdsSession = false;
    /// Whose it is, when it is not this person's: "the system" or another one's name; empty otherwise.
    QString owner{};

    bool operator==(const ProcessRow &) const = default;
};

/// What one process weighs, under the name browsers are told apart by.
struct ProcessWeight {
    QString name;
    double cpuPercent = 0;
    std::uint64_t residentBytes = 0;
    std::int32_t pid = 0;   ///< 0 where the system does not say
    bool isBrowser = false; ///< the system itself knows it as one, whatever it is called
};

/// Power drawn by one process, in the machine's own unit (higher is hungrier).
struct PowerRow {
    std::int32_t pid = 0;
    QString command;
    double power = 0;
};

/// Bytes one process moves in a second. A process may have several rows.
struct NetworkRow {
    std::int32_t pid = 0;
    std::int64_t bytesIn = 0;
    std::int64_t bytesOut = 0;
};

/// One refresh's look at the running programs. Every call may block for seconds (a tool, a measured
/// second), none throws; call from background work only, from one thread.
class ProcessSurvey {
public:
    virtual ~ProcessSurvey() = default;

    /// The busiest processes first, at most about fifty. No value: the system gave no listing.
    virtual std::optional<std::vector<ProcessRow>> busiest() = 0;
    /// The largest resident sizes first, at most about fifty. No value: the system gave no listing.
    virtual std::optional<std::vector<ProcessRow>> largest() = 0;
    /// Those of the given pids that are running. Empty when there is no listing.
    virtual std::vector<ProcessRow> matching(const std::unordered_set<std::int32_t> &pids) = 0;
    /// All that are running. Empty when there is no listing.
    virtual std::vector<ProcessRow> all() = 0;
    /// Every process of the machine.
    virtual std::vector<ProcessWeight> weights() = 0;
    /// Bytes of memory that these processes take together, what several of them share counted once. No value
    /// where the system does not say.
    virtual std::optional<std::uint64_t> memoryTogether(std::span<const std::int32_t> /*pids*/)
    {
        return std::nullopt;
    }
    /// Measured over one second. Empty when it could not be.
    virtual std::vector<PowerRow> power() = 0;
    /// Measured over one second at least. Empty when it could not be.
    virtual std::vector<NetworkRow> network() = 0;
};

/// Begins surveys; one lives as long as the machine and may keep what the next survey compares with.
/// Safe to call from several threads.
class ProcessSurveyor {
public:
    virtual ~ProcessSurveyor() = default;
    virtual std::unique_ptr<ProcessSurvey> begin() = 0;
};

} // namespace swabby
