#pragma once

#include "platform/MachineWords.h"

#include <array>
#include <optional>

namespace swabby {

/// The eight pages a person can be sent to, in the order of the sidebar.
enum class MainSection { overview, swabbyCheck, speed, battery, network, storage, startup, developer };

inline constexpr std::array allSections = {
    MainSection::overview, MainSection::swabbyCheck, MainSection::speed,   MainSection::battery,
    MainSection::network,  MainSection::storage,     MainSection::startup, MainSection::developer};

/// The case name, e.g. "swabbyCheck".
QString sectionName(MainSection section);
/// No value for a name that is no case.
std::optional<MainSection> sectionFrom(const QString &name);
/// The sidebar's words.
QString sectionTitle(MainSection section);
/// The page header's words.
QString sectionSubtitle(MainSection section, const MachineWords &words);
/// The symbol's name in the symbol table.
QString sectionSymbol(MainSection section);
/// The digit that selects the section together with the platform's shortcut key.
QChar keyEquivalent(MainSection section);

} // namespace swabby
