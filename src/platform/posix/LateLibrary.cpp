#include "platform/posix/LateLibrary.h"

#include "platform/FileIdentity.h"

#include <QtCore/QtGlobal>

#include <dlfcn.h>

namespace swabby {
namespace {

std::filesystem::path ownFile()
{
    static const char own = 0;
    Dl_info info = {};
    return ::dladdr(&own, &info) != 0 && info.dli_fname != nullptr ? std::filesystem::path(info.dli_fname)
                                                                   : std::filesystem::path();
}

// Seen while the program is loaded.
const std::optional<FileIdentity> loadedFrom = FileIdentity::of(ownFile());

// Null, with a word for dlerror(), when it cannot be loaded.
void *load(const char *library)
{
    return ::dlopen((ownFolder() / library).c_str(), RTLD_NOW);
}

} // namespace

std::filesystem::path ownFolder()
{
    return ownFile().parent_path();
}

bool wasReplaced()
{
    const std::optional<FileIdentity> now = FileIdentity::of(ownFile());
    return loadedFrom && !(now && now->isSameThing(*loadedFrom));
}

void *lateSymbol(const char *library, const char *name)
{
    if (wasReplaced()) {
        qWarning("%s belongs to another Swabby than the one that runs", library);
        return nullptr;
    }
    void *const handle = load(library);
    void *const symbol = handle != nullptr ? ::dlsym(handle, name) : nullptr;
    if (symbol == nullptr)
        qWarning("%s", ::dlerror());
    return symbol;
}

void loadAhead(const char *library)
{
    if (!wasReplaced())
        load(library);
}

} // namespace swabby
