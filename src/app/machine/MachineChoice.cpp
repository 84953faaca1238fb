#include "app/machine/MachineChoice.h"

#include "platform/machinefolder/FolderMachine.h"
#if defined(__linux__) && __has_include("platform/linux/LinuxMachine.h")
#include "platform/linux/LinuxMachine.h"
#endif

#include <cstdlib>
#include <string>

namespace swabby {

void prepareProcess()
{
    // Tools print numbers and dates in the locale of their environment, and are read in the C locale's. A
    // LC_ALL that says otherwise would win over both, so its character set moves to where it still counts.
    if (const char *all = std::getenv("LC_ALL"); all && *all) {
        ::setenv("LC_CTYPE", std::string(all).c_str(), 1);
        ::unsetenv("LC_ALL");
    }
    ::setenv("LC_NUMERIC", "C", 1);
    ::setenv("LC_TIME", "C", 1);
}

std::shared_ptr<Machine> chooseMachine(const std::optional<QString> &folder, QString *problem)
{
    if (folder)
        return makeFolderMachine(*folder, problem);
#if defined(__linux__) && __has_include("platform/linux/LinuxMachine.h")
    return makeLinuxMachine();
#else
    *problem = QStringLiteral("this system is not known; --machine DIR runs on a described one");
    return nullptr;
#endif
}

} // namespace swabby
