#include "platform/mactools/HardwareReport.h"

#include "platform/TextScan.h"
#include "platform/mactools/ToolQuestions.h"

#include <string>

namespace swabby {
namespace {

constexpr std::string_view cyclesPrefix = "Cycle Count:";
constexpr std::string_view capacityPrefix = "Maximum Capacity:";

std::optional<int> percentOf(std::string_view text)
{
    std::string digits(text);
    std::erase(digits, '%');
    return integerOf<int>(trimmed(digits));
}

} // namespace

BatteryHealth parseHardwareReport(std::string_view text)
{
    BatteryHealth health;
    forEachLine(text, [&](std::string_view rawLine) {
        const std::string_view line = trimmed(rawLine);
        // A later line that can be read replaces an earlier one; one that cannot does not.
        if (line.starts_with(cyclesPrefix)) {
            if (const auto cycles = integerOf<int>(trimmed(line.substr(cyclesPrefix.size()))))
                health.cycles = cycles;
        } else if (line.starts_with(capacityPrefix)) {
            if (const auto percent = percentOf(line.substr(capacityPrefix.size())))
                health.healthPercent = percent;
        }
        return true;
    });
    return health;
}

BatteryHealth readHardwareReport(Shell &shell)
{
    const auto text = ToolQuestions::battery().ask(shell);
    return text ? parseHardwareReport(*text) : BatteryHealth();
}

} // namespace swabby
