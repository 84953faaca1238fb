#pragma once

#include <QtCore/QString>

#include <cstdint>
#include <string>

namespace swabby {

/// Whose a process is: "the system", where an account of no person's runs it, or the name of the person;
/// empty when it is this program's own user, or has ended. May ask where accounts are kept: background work.
QString processOwner(const std::string &procRoot, std::int32_t pid);

/// The name of the account that a process runs for, or its number; empty when it has ended. The same.
QString accountOf(const std::string &procRoot, std::int32_t pid);

/// As processOwner() has it.
QString ownerOfSystem();

} // namespace swabby
