#include "platform/posix/EnvironmentKey.h"

#include "platform/posix/MemoryPrivacy.h"

#include <cstdlib>
#include <cstring>

namespace swabby {
namespace {

constexpr auto variable = "ANTHROPIC_API_KEY";

std::string &taken()
{
    static std::string key;
    return key;
}

} // namespace

void takeKeyFromEnvironment()
{
    taken().clear();
    char *const value = std::getenv(variable);
    if (value == nullptr)
        return;
    keepMemoryPrivate();
    taken() = value;
    // What a process was started with can be read for as long as it runs.
    std::memset(value, 0, std::strlen(value));
    ::unsetenv(variable);
}

const std::string &keyFromEnvironment()
{
    return taken();
}

void giveKeyBackToEnvironment()
{
    if (!taken().empty())
        ::setenv(variable, taken().c_str(), 1);
}

} // namespace swabby
