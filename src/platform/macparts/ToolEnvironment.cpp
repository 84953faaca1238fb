#include "platform/macparts/ToolEnvironment.h"

#include <cstdlib>
#include <initializer_list>
#include <string>
#include <string_view>

namespace swabby {
namespace {

constexpr std::string_view systemPath = "/usr/bin:/bin:/usr/sbin:/sbin";

bool isAmong(std::string_view folders, std::string_view folder)
{
    return (':' + std::string(folders) + ':').find(':' + std::string(folder) + ':') != std::string::npos;
}

/// Each of the folders once, before those of the system.
std::string pathWithHomebrew(std::string_view path)
{
    std::string result;
    for (const std::string_view folder :
         {"/opt/homebrew/bin", "/opt/homebrew/sbin", "/usr/local/bin", "/usr/local/sbin"})
        if (!isAmong(path, folder))
            result += std::string(folder) + ':';
    return result.append(path.empty() ? systemPath : path);
}

bool namesCharacterSet()
{
    // The first that says anything counts.
    for (const char *name : {"LC_ALL", "LC_CTYPE", "LANG"})
        if (const char *value = std::getenv(name); value && *value)
            return std::string_view(value) != "C" && std::string_view(value) != "POSIX";
    return false;
}

} // namespace

void prepareEnvironmentForTools()
{
    const char *path = std::getenv("PATH");
    ::setenv("PATH", pathWithHomebrew(path ? path : "").c_str(), 1);
    if (namesCharacterSet())
        return;
    ::unsetenv("LC_ALL");
    ::setenv("LC_CTYPE", "UTF-8", 1);
}

} // namespace swabby
