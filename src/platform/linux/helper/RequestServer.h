#pragma once

#include <string>
#include <string_view>

namespace swabby {

/// Makes the answer of a request; runs in a process of its own, confined. Where the system refuses to confine
/// it, of an empty request: what others made is not looked at then.
using AnswerRequest = std::string(std::string_view request);

/// The life of a helper: answers what HelperProgram sends over standard input, until that is closed. What it
/// has prepared before is there for every request. Gives the exit status.
int serveRequests(AnswerRequest *answerTo);

} // namespace swabby
