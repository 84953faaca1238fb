#include "platform/mactools/MacBootClock.h"

#include "platform/TextScan.h"
#include "platform/Utf8.h"
#include "platform/mactools/ToolQuestions.h"

#include <QtCore/QDateTime>

namespace swabby {

std::optional<double> parseBootTime(std::string_view text)
{
    constexpr std::string_view marker = "sec = ";
    const std::size_t at = text.find(marker);
    if (at == std::string_view::npos)
        return std::nullopt;
    const std::string_view rest = text.substr(at + marker.size());
    return numberOf(rest.substr(0, rest.find_first_not_of("0123456789")));
}

std::optional<double> parseStartTime(std::string_view text)
{
    // Single-digit days are padded with a second blank.
    const QString line = textOf(trimmed(text)).replace(QLatin1String("  "), QLatin1String(" "));
    const QDateTime start = QLocale::c().toDateTime(line, QStringLiteral("ddd MMM d HH:mm:ss yyyy"));
    if (!start.isValid())
        return std::nullopt;
    return static_cast<double>(start.toSecsSinceEpoch());
}

std::optional<double> MacBootClock::bootEpoch()
{
    std::call_once(m_bootRead, [this] {
        if (const auto text = ToolQuestions::bootTime().ask(m_shell))
            m_bootEpoch = parseBootTime(*text);
    });
    return m_bootEpoch;
}

std::optional<double> MacBootClock::startEpoch(std::int32_t pid)
{
    const auto text = ToolQuestions::startTime(pid).ask(m_shell);
    return text ? parseStartTime(*text) : std::nullopt;
}

} // namespace swabby
