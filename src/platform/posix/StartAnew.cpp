#include "platform/posix/StartAnew.h"

#include "platform/posix/EnvironmentKey.h"

#include <unistd.h>

namespace swabby {

void startAnew(const std::string &program, const std::vector<std::string> &arguments)
{
    giveKeyBackToEnvironment();
    std::vector<std::string> words = arguments;
    words.insert(words.begin(), program);
    std::vector<char *> pointers;
    pointers.reserve(words.size() + 1);
    for (std::string &word : words)
        pointers.push_back(word.data());
    pointers.push_back(nullptr);
    ::execv(program.c_str(), pointers.data());
}

} // namespace swabby
