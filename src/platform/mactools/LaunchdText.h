#pragma once

#include <QtCore/QByteArray>
#include <QtCore/QStringList>

#include <cstdint>
#include <optional>
#include <string_view>

namespace swabby {

/// What a job's property list says.
struct LaunchJob {
    std::optional<QString> label;
    QString programPath; ///< empty when it names none
};

/// No value for bytes that are no property list (XML or binary) with a dictionary at the top, or too many.
std::optional<LaunchJob> parseLaunchJob(const QByteArray &propertyList);

/// Whether the service manager knows a job, and its process.
struct LoadedJob {
    bool isLoaded = false;
    std::optional<std::int32_t> pid;

    bool operator==(const LoadedJob &) const = default;
};

/// From the text of `launchctl print`.
LoadedJob parseLoadedJob(std::string_view text);

/// Whether the text of `codesign -dv --verbose=2` names Apple as an authority.
bool namesAppleAuthority(std::string_view text);

/// The names in the answer of the System Events question for login items.
QStringList parseLoginItemNames(std::string_view text);
/// Whether its complaint says that the person does not let Swabby ask.
bool refusesAppleEvents(std::string_view text);

} // namespace swabby
