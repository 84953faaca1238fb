#pragma once

namespace swabby {

/// Whether there is a display to open windows on. Asked before the toolkit is, which ends the program
/// when there is none.
bool hasDisplay();

/// Whether programs choose where their windows stand. With a display.
bool placesWindows();

/// Brings the program before all others, where its windows cannot do so themselves.
void comeToFront();

/// Whether what a window leaves transparent shows what lies beneath it, and not black. With a display.
bool blendsWindows();

/// Whether the name of the program is to be part of a window's title, since nothing else on its frame has it.
bool wantsNameInTitles();

} // namespace swabby
