#pragma once

namespace swabby {

/// Whether the text is an address of this computer's own loop, of either family; a name is none.
bool isLoopbackAddress(const char *text);

} // namespace swabby
