#pragma once

#include "platform/Shell.h"

#include <functional>
#include <string_view>
#include <utility>

namespace swabby {

/// Runs tools as child processes of this program. A child inherits the environment but for the user's
/// API key, and leads a process group of its own, so that ending it ends what it started.
class PosixShell final : public Shell {
public:
    /// Variables are set for every tool on top of the inherited ones.
    using Variables = std::vector<std::pair<std::string, std::string>>;

    /// Tools end when stop is requested, whatever token a call brings.
    explicit PosixShell(StopToken stop) : m_stop(std::move(stop)) {}

    bool has(const std::string &executable) override;
    bool launch(const std::string &executable, const std::vector<std::string> &arguments) override;

    /// Starts a program of Swabby's own, hands it the input and gives what it writes until it ends: what came
    /// so far when stop is requested, nothing when it could not be started. What it started ends with it.
    /// Blocks for as long as it runs.
    std::string converse(const std::string &executable, std::string_view input, const StopToken &stop);

    /// As run(), with variables; started tells whether the tool could be started.
    std::optional<std::string> runWith(const Variables &variables, const std::string &executable,
                                       const std::vector<std::string> &arguments, ToolOutput output,
                                       const StopToken &stop, const std::function<void()> &started);

private:
    std::optional<std::string> perform(const std::string &executable,
                                       const std::vector<std::string> &arguments, ToolOutput output,
                                       const StopToken &stop) override;

    StopToken m_stop;
};

} // namespace swabby
