#pragma once

#include "platform/Machine.h"

#include <memory>

namespace swabby {

/// Sets in the environment what this system's libraries would otherwise find in ways of their own. Before the
/// first thread.
void prepareForThisComputer();

/// The computer this program runs on. Each system's folder has the one implementation of it.
std::shared_ptr<Machine> makeThisComputer();

} // namespace swabby
