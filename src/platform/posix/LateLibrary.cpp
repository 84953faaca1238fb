#include "platform/posix/LateLibrary.h"

#include <QtCore/QtGlobal>

#include <dlfcn.h>

namespace swabby {

// By its bare name: it is looked for where the library that holds this code says, beside itself.
void *lateSymbol(const char *library, const char *name)
{
    void *const handle = dlopen(library, RTLD_NOW);
    void *const symbol = handle != nullptr ? dlsym(handle, name) : nullptr;
    if (symbol == nullptr)
        qWarning("%s", dlerror());
    return symbol;
}

} // namespace swabby
