#include "platform/linux/ProcessStat.h"

#include <unistd.h>

#include <algorithm>
#include <limits>

namespace swabby {

namespace {

/// Steps over the blank-separated fields of the line. Written by hand: this runs for every process of the
/// machine at every refresh.
class Fields {
public:
    explicit Fields(std::string_view text) : m_at(text.data()), m_end(text.data() + text.size()) {}

    void skip(int count)
    {
        for (; count > 0; --count) {
            skipBlanks();
            while (m_at != m_end && *m_at != ' ')
                ++m_at;
        }
    }

    /// The next field, of one letter; a zero at the end of the line.
    char letter()
    {
        skipBlanks();
        return m_at != m_end ? *m_at++ : '\0';
    }

    /// The next field as a number; a negative one is 0. Failure is remembered.
    std::uint64_t number()
    {
        skipBlanks();
        const bool isNegative = m_at != m_end && *m_at == '-';
        if (isNegative)
            ++m_at;
        if (m_at == m_end || *m_at < '0' || *m_at > '9')
            m_failed = true;
        std::uint64_t value = 0;
        for (; m_at != m_end && *m_at >= '0' && *m_at <= '9'; ++m_at)
            value = value * 10 + static_cast<std::uint64_t>(*m_at - '0');
        return isNegative ? 0 : value;
    }

    /// The same where it counts processes or threads; more than any machine has is the largest.
    std::int32_t smallNumber()
    {
        constexpr std::uint64_t largest = std::numeric_limits<std::int32_t>::max();
        return static_cast<std::int32_t>(std::min(number(), largest));
    }

    bool failed() const { return m_failed; }

private:
    void skipBlanks()
    {
        while (m_at != m_end && *m_at == ' ')
            ++m_at;
    }

    const char *m_at;
    const char *m_end;
    bool m_failed = false;
};

} // namespace

std::optional<ProcessStat> processStatFrom(std::string_view line)
{
    // The name may hold parentheses, blanks and line ends itself; nothing after it does.
    const std::size_t open = line.find('(');
    const std::size_t close = line.rfind(')');
    if (open == std::string_view::npos || close == std::string_view::npos || close < open)
        return std::nullopt;

    ProcessStat stat;
    stat.command = line.substr(open + 1, close - open - 1);
    Fields fields(line.substr(close + 1));
    const char state = fields.letter();
    stat.parentPid = fields.smallNumber();
    fields.skip(4); // group, session, terminal, terminal's group
    constexpr std::uint64_t kernelThreadFlag = 0x00200000;
    constexpr std::uint64_t forkedFlag = 0x00000040;
    const std::uint64_t flags = fields.number();
    stat.isKernelThread = (flags & kernelThreadFlag) != 0;
    stat.isForked = (flags & forkedFlag) != 0;
    fields.skip(4); // page faults
    stat.runTicks = fields.number();
    stat.runTicks += fields.number();
    fields.skip(4); // children's times, priority, nice
    stat.threads = fields.smallNumber();
    // The first thread may end before the others.
    stat.hasEnded = (state == 'Z' || state == 'X') && stat.threads <= 1;
    fields.skip(1);
    stat.startTicks = fields.number();
    fields.skip(1); // size of the address space
    stat.residentPages = fields.number();
    if (fields.failed())
        return std::nullopt;

    // Where the program and its stack lie changes with every exec. Other users' processes show 0 or 1
    // here, and a program of a garbled line is just looked up again.
    fields.skip(1);
    const std::uint64_t codeStart = fields.number();
    fields.skip(1);
    stat.programStamp = codeStart ^ (fields.number() << 1);
    return stat;
}

double ticksPerSecond()
{
    static const auto ticks = static_cast<double>(::sysconf(_SC_CLK_TCK));
    return ticks;
}

} // namespace swabby
