#pragma once

#include "settings/Setting.h"

#include <algorithm>
#include <array>
#include <string_view>
#include <tuple>

namespace swabby {

enum class RowDensity { comfortable, compact };
enum class ThemeChoice { system, light, dark };

/// Whether that is a list of paths that lead somewhere whoever reads them: absolute ones, or "~/…" for the
/// home folder. A path from nowhere in particular would protect nothing.
bool areAbsolutePaths(const QJsonValue &paths);

bool isTheme(const QJsonValue &word);
/// Empty, or what may be called.
bool isModelAddress(const QJsonValue &address);
/// Empty, or a name in one line.
bool isModelName(const QJsonValue &name);

/// Every preference, in the order people are shown them. What is not in this table does not exist.
inline constexpr std::tuple settingTable = {
    Setting<double>("cpuYellow", 60),
    Setting<double>("cpuRed", 85),
    Setting<double>("memYellow", 75),
    Setting<double>("memRed", 90),
    Setting<double>("processCpuRed", 80),
    Setting<bool>("notifyOnRed", true),
    Setting<bool>("notifyOnStorage", true),
    Setting<double>("storageNotifyThresholdGB", 2),
    Setting<bool>("showInDock", true),
    Setting<RowDensity>("rowDensity", {"comfortable", "compact"}),
    Setting<std::optional<double>>("lastWeeklySummaryDate"),
    Setting<std::optional<double>>("lastStorageNotifyCheckDate"),
    Setting<bool>("hasCompletedOnboarding", false),
    Setting<QStringList>("pinnedProcessNames"),
    Setting<qint64>("weeklyAttentionCount", 0),
    Setting<qint64>("weeklyBytesFreed", 0),
    Setting<ThemeChoice>("theme", {"system", "light", "dark"}, isTheme, "system, light or dark"),
    Setting<bool>("aiEnabled", true),
    Setting<QString>("aiModel", isModelName, "a model's name, or nothing for the built-in one"),
    Setting<QString>("aiAddress", isModelAddress,
                     "an https: address, or an http: one of this computer, or nothing for the built-in one"),
    Setting<QStringList>("neverRemove", areAbsolutePaths, "a JSON array of absolute paths"),
    Setting<bool>("notifyWeekly", true),
};

/// A name that is known to the compiler.
template <std::size_t length>
struct SettingName {
    constexpr SettingName(const char (&name)[length]) { std::copy_n(name, length, text); }

    char text[length] = {};
};

template <SettingName name>
constexpr std::size_t settingRow()
{
    std::size_t row = 0;
    const auto isElsewhere = [&](const SettingKey &key) {
        return key.name != std::string_view(name.text) && ++row > 0;
    };
    std::apply([&](const auto &...key) { static_cast<void>((isElsewhere(key) && ...)); }, settingTable);
    return row;
}

/// The row of that name, as in setting<"cpuRed">; one that is not there does not compile.
template <SettingName name>
inline constexpr const auto &setting = std::get<settingRow<name>()>(settingTable);

/// What a figure has to reach to be warned of, and to be critical: that should be the higher one.
struct Thresholds {
    const Setting<double> &warning;
    const Setting<double> &critical;
};
inline constexpr std::array thresholdPairs = {Thresholds{setting<"cpuYellow">, setting<"cpuRed">},
                                              Thresholds{setting<"memYellow">, setting<"memRed">}};

} // namespace swabby
