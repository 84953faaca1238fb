#include "recording/ToolTexts.h"

#include "platform/TextScan.h"
#include "platform/Utf8.h"
#include "platform/mactools/LaunchdText.h"
#include "platform/mactools/MacBootClock.h"
#include "recording/MacTexts.h"

#include <QtCore/QRegularExpression>
#include <QtCore/QStringList>

#include <algorithm>
#include <array>

namespace swabby {
namespace {

std::string linesOf(const std::string &text, auto lineOf)
{
    std::string result;
    forEachLine(text, [&](std::string_view line) {
        result += lineOf(line) + '\n';
        return true;
    });
    return result;
}

/// The columns of a list of processes, the command last.
std::string processes(const ToolRun &run, Rewriting &rewriting)
{
    const std::string &columns = run.arguments.size() > 1 ? run.arguments[1] : std::string();
    const auto before = std::ranges::count(columns, ',');
    if (before == 0) // when one of them started
        return parseStartTime(*run.text) ? *run.text : std::string();
    return linesOf(*run.text, [&, isHead = true](std::string_view line) mutable {
        std::size_t at = 0;
        for (auto column = before; column > 0 && at != std::string_view::npos; --column)
            at = line.find(' ', line.find_first_not_of(' ', at));
        at = at == std::string_view::npos ? at : line.find_first_not_of(' ', at);
        if (std::exchange(isHead, false) || at == std::string_view::npos)
            return std::string(line);
        return std::string(line.substr(0, at)) + rewriting.command(textOf(line.substr(at))).toStdString();
    });
}

std::string energy(const ToolRun &run, Rewriting &rewriting)
{
    static const QRegularExpression row(QStringLiteral("^(\\s*\\d+\\*?\\s+)(\\S.*?)(\\s+[\\d.]+\\s*)$"));
    return linesOf(*run.text, [&](std::string_view line) {
        const auto match = row.match(textOf(line));
        return match.hasMatch()
                   ? (match.captured(1) + rewriting.command(match.captured(2)) + match.captured(3))
                         .toStdString()
                   : std::string(line);
    });
}

std::string traffic(const ToolRun &run, Rewriting &rewriting)
{
    return linesOf(*run.text, [&](std::string_view line) {
        const std::size_t comma = std::min(line.find(','), line.size());
        const std::size_t dot = line.substr(0, comma).rfind('.');
        if (dot == std::string_view::npos)
            return std::string(line);
        return rewriting.command(textOf(line.substr(0, dot))).toStdString() + std::string(line.substr(dot));
    });
}

std::string sizes(const ToolRun &run, Rewriting &rewriting)
{
    const std::string path = run.arguments.empty() ? std::string() : run.arguments.back();
    return run.text->substr(0, run.text->find('\t')) + '\t' + rewriting.path(path) + '\n';
}

std::string paths(const ToolRun &run, Rewriting &rewriting)
{
    return linesOf(*run.text, [&](std::string_view line) { return rewriting.path(line); });
}

std::string job(const ToolRun &run, Rewriting & /*rewriting*/)
{
    return jobText(parseLoadedJob(*run.text));
}

std::string signature(const ToolRun &run, Rewriting & /*rewriting*/)
{
    return signatureText(namesAppleAuthority(*run.text));
}

std::string loginItems(const ToolRun &run, Rewriting &rewriting)
{
    QStringList names = parseLoginItemNames(*run.text);
    for (QString &name : names)
        name = rewriting.name(name);
    const std::string said = names.join(QStringLiteral(", ")).toStdString() + '\n';
    return refusesAppleEvents(*run.text) ? said + complaintMark + "(-1743)\n" : said;
}

std::string battery(const ToolRun &run, Rewriting & /*rewriting*/)
{
    std::string text;
    forEachLine(*run.text, [&](std::string_view line) {
        if (line.find("Cycle Count:") != line.npos || line.find("Maximum Capacity:") != line.npos)
            text.append(line) += '\n';
        return true;
    });
    return text;
}

std::string asItStands(const ToolRun &run, Rewriting &rewriting)
{
    return rewriting.text(*run.text);
}

using Cut = std::string (*)(const ToolRun &run, Rewriting &rewriting);

struct Tool {
    const char *executable;
    Cut withoutNames;
    Cut withNames;
};

// A job's environment and a serial number are no names, so what holds them is cut in any case.
constexpr Tool tools[] = {
    {"/bin/ps", processes, asItStands},
    {"/usr/bin/top", energy, asItStands},
    {"/usr/bin/nettop", traffic, asItStands},
    {"/usr/bin/du", sizes, asItStands},
    {"/usr/bin/find", paths, asItStands},
    {"/bin/launchctl", job, job},
    {"/usr/bin/codesign", signature, signature},
    {"/usr/bin/osascript", loginItems, asItStands},
    {"/usr/sbin/system_profiler", battery, battery},
    {"/usr/sbin/sysctl", asItStands, asItStands},
    {"/usr/bin/xcrun", asItStands, asItStands},
    {"/usr/local/bin/docker", asItStands, asItStands},
    {"/opt/homebrew/bin/docker", asItStands, asItStands},
};

} // namespace

std::string ToolTexts::argument(const std::string &executable, const std::string &word)
{
    if (word.starts_with('/'))
        return m_rewriting.path(word);
    // "gui/501/LABEL"
    const std::size_t slash = word.rfind('/');
    if (executable != "/bin/launchctl" || slash == std::string::npos)
        return word;
    return word.substr(0, slash + 1) + m_rewriting.name(textOf(word.substr(slash + 1))).toStdString();
}

void ToolTexts::add(const ToolRun &run)
{
    const auto tool = std::ranges::find(tools, run.executable, &Tool::executable);
    if (tool == std::end(tools) || !run.text)
        return;
    ToolRun said = run;
    const Cut cut = m_rewriting.keepsNames() ? tool->withNames : tool->withoutNames;
    said.text = cut(run, m_rewriting);
    for (std::string &word : said.arguments)
        word = argument(run.executable, word);
    m_runs.push_back(std::move(said));
}

void ToolTexts::addMissing(const std::string &executable, const std::vector<std::string> &arguments,
                           const std::string &text)
{
    const auto isThat = [&](const ToolRun &run) {
        return run.executable == executable && run.arguments == arguments;
    };
    if (std::ranges::none_of(m_runs, isThat))
        m_runs.push_back({executable, arguments, text});
}

bool ToolTexts::has(const std::string &executable) const
{
    return std::ranges::any_of(m_runs, [&](const ToolRun &run) { return run.executable == executable; });
}

} // namespace swabby
