#pragma once

#include "platform/Machine.h"
#include "platform/MachineFolder.h"

#include <memory>

namespace swabby {

/// The Mac that a folder describes: its kernel figures come from DIR/machine.json, its tools are the
/// stand-ins under DIR/root, and nothing outside DIR is ever written, signalled, opened or notified. No
/// value, and one line in problem, when the folder describes no machine.
std::shared_ptr<Machine> makeFolderMachine(const MachineFolder &given, QString *problem);

} // namespace swabby
