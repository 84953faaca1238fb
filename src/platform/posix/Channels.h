#pragma once

#include "platform/posix/Descriptor.h"

namespace swabby {

// What programs on one computer speak through. No child finds one open that it is not given, and the end of
// the other side is a failure to send, never a signal.

struct Ends {
    Descriptor first;
    Descriptor second;
};

/// What is written to the second end is read from the first. Neither is open when the system has none to
/// give.
Ends makePipe();
/// Two ends of a stream in both directions.
Ends makeSocketPair();

/// A stream socket that is connected to nothing; not open when the system has none to give.
Descriptor makeLocalSocket();
/// Takes who waits at a listening socket; not open when nobody does.
Descriptor acceptCaller(int listener);

/// What sending through these sockets needs among its flags.
extern const int withoutSignal;

} // namespace swabby
