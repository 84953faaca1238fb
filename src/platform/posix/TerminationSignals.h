#pragma once

namespace swabby {

/// Makes the signals that ask a program to end leave the event loop instead, so that the tools it runs end
/// with it; a second one ends the program at once. Construct before the first thread.
class TerminationSignals {
public:
    TerminationSignals();
};

} // namespace swabby
