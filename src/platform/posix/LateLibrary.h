#pragma once

#include <filesystem>

namespace swabby {

/// The folder of the library that holds this code: its companions lie there, wherever it is installed.
std::filesystem::path ownFolder();

/// Whether what this code was loaded from is no longer what lies at its place: Swabby was updated or removed
/// while it ran, and what lies there now does not go with what runs. A look at one file.
bool wasReplaced();

/// The symbol of that name in a library beside this one, which is loaded for it when it is first asked for
/// and stays: what few people use, and few times, takes no memory until then. Null, with a word on standard
/// error, when it is not there or another build's. Loading waits for the disk; any thread may ask.
void *lateSymbol(const char *library, const char *name);

/// The same as a function of that type.
template <typename Function>
Function *lateFunction(const char *library, const char *name)
{
    return reinterpret_cast<Function *>(lateSymbol(library, name));
}

/// Loads that library before somebody asks for a symbol of it. Says nothing when it cannot. Waits for the
/// disk; any thread may ask.
void loadAhead(const char *library);

} // namespace swabby
