#pragma once

#include "platform/StopToken.h"

#include <functional>
#include <optional>
#include <string>
#include <vector>

namespace swabby {

/// Which of a tool's streams make up its text. As fileNames its standard output is given also when it is no
/// UTF-8: file names are bytes, and one odd name must not hide all the others. Apart is its standard output,
/// and behind it, when it complained, a complaintMark and its standard error.
enum class ToolOutput { bothStreams, standardOutput, fileNames, apart };
inline constexpr char complaintMark = '\0';

/// A tool that was asked for, and what it said.
struct ToolRun {
    std::string executable;
    std::vector<std::string> arguments;
    std::optional<std::string> text;
};

/// Runs external tools: the only place of the program that starts one.
class Shell {
public:
    virtual ~Shell() = default;

    /// Who is told of every run() from here on, from the thread that made it, perhaps by several at once. Say
    /// so before anything runs.
    void tell(std::function<void(const ToolRun &run)> listener) { m_listener = std::move(listener); }

    /// Runs a tool by its absolute path, each argument one argv entry, no PATH, no shell, and gives its
    /// whole text once it has ended. No value when it could not be started or its text is no UTF-8; the
    /// exit status is not looked at. Blocks for as long as the tool runs, without a time limit; when the
    /// token stops, the tool and its children are ended and what came so far is given.
    std::optional<std::string> run(const std::string &executable, const std::vector<std::string> &arguments,
                                   ToolOutput output = ToolOutput::bothStreams, const StopToken &stop = {})
    {
        std::optional<std::string> text = perform(executable, arguments, output, stop);
        if (m_listener)
            m_listener({executable, arguments, text});
        return text;
    }

    /// Whether there is such a tool to run. Does not wait.
    virtual bool has(const std::string &executable) = 0;

    /// Starts a program of the person's, with a window of its own say, that lives on without this one. Its
    /// text goes nowhere. False when it could not be started. Does not wait.
    virtual bool launch(const std::string &executable, const std::vector<std::string> &arguments) = 0;

private:
    virtual std::optional<std::string> perform(const std::string &executable,
                                               const std::vector<std::string> &arguments, ToolOutput output,
                                               const StopToken &stop) = 0;

    std::function<void(const ToolRun &)> m_listener;
};

} // namespace swabby
