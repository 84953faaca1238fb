#include "platform/mactools/MacProcessSurveyor.h"

#include "platform/mactools/NettopText.h"
#include "platform/mactools/PsText.h"
#include "platform/mactools/ToolQuestions.h"
#include "platform/mactools/TopText.h"

namespace swabby {
namespace {

class MacProcessSurvey final : public ProcessSurvey {
public:
    explicit MacProcessSurvey(Shell &shell) : m_shell(shell) {}

    std::optional<std::vector<ProcessRow>> busiest() override { return sorted(ToolQuestions::busiest()); }
    std::optional<std::vector<ProcessRow>> largest() override { return sorted(ToolQuestions::largest()); }

    std::vector<ProcessRow> matching(const std::unordered_set<std::int32_t> &pids) override
    {
        const auto text = ToolQuestions::processes().ask(m_shell);
        return text ? parseMatchingRows(*text, pids) : std::vector<ProcessRow>();
    }

    std::vector<ProcessRow> all() override
    {
        const auto text = ToolQuestions::processes().ask(m_shell);
        return text ? parseProcessRows(*text) : std::vector<ProcessRow>();
    }

    std::vector<ProcessWeight> weights() override
    {
        const auto text = ToolQuestions::weights().ask(m_shell);
        return text ? parseWeights(*text) : std::vector<ProcessWeight>();
    }

    std::vector<PowerRow> power() override
    {
        const auto text = ToolQuestions::power().ask(m_shell);
        return text ? parseTop(*text) : std::vector<PowerRow>();
    }

    std::vector<NetworkRow> network() override
    {
        const auto text = ToolQuestions::traffic().ask(m_shell);
        return text ? parseNettop(*text) : std::vector<NetworkRow>();
    }

private:
    std::optional<std::vector<ProcessRow>> sorted(const ToolQuestion &order)
    {
        const auto text = order.ask(m_shell);
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
