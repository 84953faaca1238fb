#pragma once

#include <string>
#include <string_view>

namespace swabby {

/// Makes the answer of a request; runs in a process of its own, confined.
using AnswerRequest = std::string(std::string_view request);

/// The life of a helper: answers what HelperProgram sends over standard input, until that is closed. What it
/// has prepared before is there for every request. Gives the exit status.
int serveRequests(AnswerRequest *answer);

} // namespace swabby
