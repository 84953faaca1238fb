#include "platform/posix/LateLibrary.h"

#include <QtCore/QtGlobal>

#include <dlfcn.h>

namespace swabby {

std::filesystem::path ownFolder()
{
    static const char own = 0;
    Dl_info info = {};
    return ::dladdr(&own, &info) != 0 && info.dli_fname != nullptr
               ? std::filesystem::path(info.dli_fname).parent_path()
               : std::filesystem::path();
}

void *lateSymbol(const char *library, const char *name)
{
    void *const handle = ::dlopen((ownFolder() / library).c_str(), RTLD_NOW);
    void *const symbol = handle != nullptr ? ::dlsym(handle, name) : nullptr;
    if (symbol == nullptr)
        qWarning("%s", ::dlerror());
    return symbol;
}

} // namespace swabby
