#pragma once

#include <string>
#include <string_view>
#include <vector>

namespace swabby {

/// What a unit file of the service manager says, as far as Swabby uses it.
struct UnitFile {
    std::string description; ///< as written; empty when it has none
    std::string command;     ///< of the first ExecStart, as written; empty for a unit that starts no program
    std::string activates;   ///< the unit a timer starts, when it names one
};

/// Comments and continued lines undone; an empty unit for any text that is none.
UnitFile unitFileFrom(std::string_view text);

/// What the placeholders of a command stand for.
struct UnitNames {
    std::string unit; ///< as enabled, "backup@photos.service"
    std::string home;
};

/// What people call the unit: its description with placeholders filled in, else its name.
std::string unitLabel(const UnitFile &unit, const UnitNames &names);

/// The words of a unit's command with placeholders filled in. The signs before the program that change how
/// it is run are dropped. A program with a placeholder that cannot be filled in gives no words.
std::vector<std::string> unitCommand(std::string_view command, const UnitNames &names);

} // namespace swabby
