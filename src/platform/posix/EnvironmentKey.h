#pragma once

#include <string>

namespace swabby {

/// Takes the key for the model out of the environment, where every library and every child would find it, and
/// closes this process's memory to others if there is one. Before the first thread.
void takeKeyFromEnvironment();

/// The key that was taken last, as ANTHROPIC_API_KEY gave it; empty when there was none.
const std::string &keyFromEnvironment();

/// Puts it back, for a program that takes this one's place.
void giveKeyBackToEnvironment();

} // namespace swabby
