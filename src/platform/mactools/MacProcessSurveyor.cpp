#include "platform/mactools/MacProcessSurveyor.h"

#include "platform/mactools/NettopText.h"
#include "platform/mactools/PsText.h"
#include "platform/mactools/TopText.h"

namespace swabby {
namespace {

constexpr auto processColumns = "pid,ppid,pcpu,pmem,rss,comm";

class MacProcessSurvey final : public ProcessSurvey {
public:
    explicit MacProcessSurvey(Shell &shell) : m_shell(shell) {}

    std::optional<std::vector<ProcessRow>> busiest() override { return sorted("-r"); }
    std::optional<std::vector<ProcessRow>> largest() override { return sorted("-m"); }

    std::vector<ProcessRow> matching(const std::unordered_set<std::int32_t> &pids) override
    {
        const auto text = m_shell.run("/bin/ps", {"-Ao", processColumns});
        return text ? parseMatchingRows(*text, pids) : std::vector<ProcessRow>();
    }

    std::vector<ProcessWeight> weights() override
    {
        const auto text = m_shell.run("/bin/ps", {"-Ao", "pcpu,rss,comm"});
        return text ? parseWeights(*text) : std::vector<ProcessWeight>();
    }

    std::vector<PowerRow> power() override
    {
        const auto text =
            m_shell.run("/usr/bin/top", {"-l", "2", "-s", "1", "-stats", "pid,command,power", "-n", "300"});
        return text ? parseTop(*text) : std::vector<PowerRow>();
    }

    std::vector<NetworkRow> network() override
    {
        const auto text = m_shell.run("/usr/bin/nettop",
                                      {"-P", "-x", "-d", "-L", "2", "-s", "1", "-J", "bytes_in,bytes_out"});
        return text ? parseNettop(*text) : std::vector<NetworkRow>();
    }

private:
    std::optional<std::vector<ProcessRow>> sorted(const char *order)
    {
        const auto text = m_shell.run("/bin/ps", {"-Ao", processColumns, order});
        if (!text)
            return std::nullopt;
        return parseProcessRows(*text, sortedListingLines);
    }

    Shell &m_shell;
};

} // namespace

std::unique_ptr<ProcessSurvey> MacProcessSurveyor::begin()
{
    return std::make_unique<MacProcessSurvey>(m_shell);
}

} // namespace swabby
