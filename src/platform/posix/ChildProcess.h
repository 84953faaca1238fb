#pragma once

#include <string>
#include <vector>

#include <sys/types.h>

namespace swabby {

/// A program by its absolute path, with what it is given; each argument and each "NAME=value" is one entry.
struct ChildProgram {
    std::string executable;
    std::vector<std::string> arguments{};
    std::vector<std::string> environment{};
};

constexpr int nowhere = -1;

/// The descriptors that become the child's; nothing can be read from or written to nowhere.
struct ChildStreams {
    int input = nowhere;
    int output = nowhere;
    int error = nowhere;
};

/// Whether a child leads a process group of its own, so that ending it ends what it started, or a session.
enum class Bond { child, stranger };

/// Starts the program with default signals, none of them blocked. Its number, which somebody has to wait for;
/// -1 when it could not be started. Does not block.
pid_t startChild(const ChildProgram &program, const ChildStreams &streams, Bond bond = Bond::child);

} // namespace swabby
