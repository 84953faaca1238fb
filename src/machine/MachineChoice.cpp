#include "machine/MachineChoice.h"

#include "platform/ThisComputer.h"
#include "platform/machinefolder/FolderMachine.h"
#include "platform/posix/EnvironmentKey.h"

#include <csignal>
#include <cstdlib>
#include <iterator>
#include <string>

namespace swabby {
namespace {

constexpr const char *localeNames[] = {"LC_ALL", "LC_CTYPE", "LC_NUMERIC", "LC_TIME"};
std::optional<std::string> localeAtStart[std::size(localeNames)];

} // namespace

void prepareProcess()
{
    takeKeyFromEnvironment();
    for (std::size_t index = 0; index < std::size(localeNames); ++index)
        if (const char *value = std::getenv(localeNames[index]))
            localeAtStart[index] = value;
    // What is shown keeps the person's own style, and every QLocale() is that from here on.
    QLocale::setDefault(localeOfTimes());
    // Tools print numbers and dates in the locale of their environment, and are read in the C locale's. A
    // LC_ALL that says otherwise would win over both, so its character set moves to where it still counts.
    if (const char *all = std::getenv("LC_ALL"); all && *all) {
        ::setenv("LC_CTYPE", std::string(all).c_str(), 1);
        ::unsetenv("LC_ALL");
    }
    ::setenv("LC_NUMERIC", "C", 1);
    ::setenv("LC_TIME", "C", 1);
    // A file that may not grow is a save that fails, and the person is told; it is no end of the program.
    std::signal(SIGXFSZ, SIG_IGN);
    prepareForThisComputer();
}

void giveLocaleBackToEnvironment()
{
    for (std::size_t index = 0; index < std::size(localeNames); ++index) {
        if (localeAtStart[index])
            ::setenv(localeNames[index], localeAtStart[index]->c_str(), 1);
        else
            ::unsetenv(localeNames[index]);
    }
}

MachineWords chooseWords(const std::optional<QString> &folder)
{
    return folder ? MachineWords() : wordsOfThisComputer();
}

std::shared_ptr<Machine> chooseMachine(const std::optional<MachineFolder> &folder, QString *problem)
{
    return folder ? makeFolderMachine(*folder, problem) : makeThisComputer();
}

} // namespace swabby
