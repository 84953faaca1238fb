#pragma once

#include "platform/Machine.h"
#include "platform/MachineFolder.h"

#include <memory>
#include <optional>

namespace swabby {

/// Sets what every program of the house needs before its first thread: numbers and dates in the form
/// that tools are parsed in, times shown in the person's own, and a key out of the environment. Call first in
/// main.
void prepareProcess();

/// Undoes to the locale what that did, for a program that takes this one's place.
void giveLocaleBackToEnvironment();

/// How the machine in that folder, else this computer, speaks of itself; neither is looked at for it.
MachineWords chooseWords(const std::optional<QString> &folder);

/// The machine to look after: the one that a folder describes, else this computer. No value when the
/// folder describes none; problem then says why in one line.
std::shared_ptr<Machine> chooseMachine(const std::optional<MachineFolder> &folder, QString *problem);

} // namespace swabby
