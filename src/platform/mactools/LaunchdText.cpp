#include "platform/mactools/LaunchdText.h"

#include "platform/Shell.h"
#include "platform/TextScan.h"
#include "platform/Utf8.h"
#include "platform/mactools/PropertyList.h"

namespace swabby {
namespace {

/// The first of an array that holds nothing but strings.
std::optional<QString> firstString(plist_t node)
{
    if (!node || plist_get_node_type(node) != PLIST_ARRAY)
        return std::nullopt;
    const std::uint32_t count = plist_array_get_size(node);
    for (std::uint32_t i = 0; i < count; ++i)
        if (!plistText(plist_array_get_item(node, i)))
            return std::nullopt;
    return count > 0 ? plistText(plist_array_get_item(node, 0)) : std::nullopt;
}

} // namespace

std::optional<LaunchJob> parseLaunchJob(const QByteArray &propertyList)
{
    const PlistNode top = plistDictionary(propertyList);
    if (!top)
        return std::nullopt;

    LaunchJob job;
    job.label = plistText(plist_dict_get_item(top.get(), "Label"));
    job.programPath = plistText(plist_dict_get_item(top.get(), "Program")).value_or(QString());
    if (job.programPath.isEmpty())
        job.programPath = firstString(plist_dict_get_item(top.get(), "ProgramArguments")).value_or(QString());
    return job;
}

LoadedJob parseLoadedJob(std::string_view text)
{
    if (text.empty() || text.find("Could not find service") != std::string_view::npos)
        return {};
    LoadedJob job = {.isLoaded = true, .pid = std::nullopt};
    forEachLine(text, [&](std::string_view rawLine) {
        constexpr std::string_view marker = "pid = ";
        const std::size_t begin = rawLine.find_first_not_of(" \t");
        if (begin == std::string_view::npos)
            return true;
        const std::string_view line = rawLine.substr(begin, rawLine.find_last_not_of(" \t") - begin + 1);
        if (line.starts_with(marker))
            job.pid = integerOf<std::int32_t>(line.substr(marker.size()));
        return !job.pid;
    });
    return job;
}

bool namesAppleAuthority(std::string_view text)
{
    return text.find("Authority=Apple") != std::string_view::npos ||
           text.find("Authority=Software Signing") != std::string_view::npos;
}

QStringList parseLoginItemNames(std::string_view text)
{
    QStringList names;
    text = text.substr(0, text.find(complaintMark));
    for (const QString &piece : textOf(text).split(QLatin1Char(',')))
        if (const QString name = piece.trimmed(); !name.isEmpty())
            names.append(name);
    return names;
}

bool refusesAppleEvents(std::string_view text)
{
    const std::size_t complaint = text.find(complaintMark);
    // The words around it are in the person's language.
    return complaint != text.npos && text.find("(-1743)", complaint) != text.npos;
}

} // namespace swabby
