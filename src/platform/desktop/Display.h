#pragma once

namespace swabby {

/// Whether there is a display to open windows on. Asked before the toolkit is, which ends the program
/// when there is none.
bool hasDisplay();

} // namespace swabby
