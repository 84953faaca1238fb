#pragma once

#include "platform/Shell.h"
#include "recording/Rewriting.h"

#include <string>
#include <vector>

namespace swabby {

/// What the tools of a recorded folder are to say, each to its own question.
class ToolTexts {
public:
    explicit ToolTexts(Rewriting &rewriting) : m_rewriting(rewriting) {}

    /// What a tool said, if it is one that a Mac is looked after with. Neither serial numbers nor a job's
    /// environment are in it and, where names are replaced, no more of it than what somebody reads.
    void add(const ToolRun &run);
    /// What it would have said, where nobody has heard it.
    void addMissing(const std::string &executable, const std::vector<std::string> &arguments,
                    const std::string &text);
    bool has(const std::string &executable) const;

    const std::vector<ToolRun> &runs() const { return m_runs; }

private:
    std::string argument(const std::string &executable, const std::string &word);

    Rewriting &m_rewriting;
    std::vector<ToolRun> m_runs;
};

} // namespace swabby
