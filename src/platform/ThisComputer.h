#pragma once

#include "platform/Machine.h"

#include <memory>

namespace swabby {

/// The computer this program runs on. Each system's folder has the one implementation of it.
std::shared_ptr<Machine> makeThisComputer();

} // namespace swabby
