#pragma once

#include "platform/LoginService.h"

namespace swabby::LoginAtLogin {

/// Has the system open Swabby at login, or no longer. Registers once however often it is said; off is said to
/// the system whatever it thinks. A failure goes to the log and nowhere else. Reads and writes a small file
/// at most.
void setEnabled(bool enabled, LoginService &service);

} // namespace swabby::LoginAtLogin
