#include "platform/linux/KernelFile.h"

#include <dirent.h>
#include <fcntl.h>
#include <unistd.h>

#include <algorithm>
#include <array>
#include <climits>

namespace swabby {

Descriptor openForReading(const std::string &path)
{
    // A named pipe among configuration files must not hold up the refresh.
    return Descriptor(::open(path.c_str(), O_RDONLY | O_CLOEXEC | O_NONBLOCK | O_NOCTTY));
}

std::string_view readFromStart(int descriptor, char *buffer, std::size_t size)
{
    const ssize_t got = ::pread(descriptor, buffer, size, 0);
    return got > 0 ? std::string_view(buffer, static_cast<std::size_t>(got)) : std::string_view();
}

std::string fileText(const std::string &path)
{
    constexpr std::size_t largest = 1 << 20;
    const Descriptor file = openForReading(path);
    if (!file.isOpen())
        return {};

    std::string text;
    std::array<char, 8192> buffer;
    while (true) {
        const ssize_t got = ::read(file.number(), buffer.data(), buffer.size());
        if (got < 0 || text.size() > largest)
            return {};
        if (got == 0)
            return text;
        text.append(buffer.data(), static_cast<std::size_t>(got));
    }
}

std::string linkTarget(const std::string &path)
{
    std::array<char, PATH_MAX> buffer;
    const ssize_t length = ::readlink(path.c_str(), buffer.data(), buffer.size());
    return length > 0 ? std::string(buffer.data(), static_cast<std::size_t>(length)) : std::string();
}

bool isThere(const std::string &path)
{
    return path.starts_with('/') && ::access(path.c_str(), F_OK) == 0;
}

std::vector<std::string> folderEntries(const std::string &path)
{
    std::vector<std::string> names;
    DIR *folder = ::opendir(path.c_str());
    if (!folder)
        return names;
    while (const dirent *entry = ::readdir(folder)) {
        const std::string_view name = entry->d_name;
        if (name != "." && name != "..")
            names.emplace_back(name);
    }
    ::closedir(folder);
    return names;
}

std::optional<std::string_view> nextLine(std::string_view &text)
{
    if (text.empty())
        return std::nullopt;
    const std::size_t end = text.find('\n');
    const std::string_view line = text.substr(0, end);
    text.remove_prefix(end == std::string_view::npos ? text.size() : end + 1);
    return line;
}

std::string_view nextWord(std::string_view &text)
{
    constexpr std::string_view blanks = " \t\n";
    text.remove_prefix(std::min(text.find_first_not_of(blanks), text.size()));
    const std::string_view word = text.substr(0, text.find_first_of(blanks));
    text.remove_prefix(word.size());
    return word;
}

std::optional<std::uint64_t> kibibytesOf(std::string_view word)
{
    constexpr std::uint64_t largest = 1ULL << 50;
    const auto number = integerOf<std::uint64_t>(word);
    return number && *number <= largest ? number : std::nullopt;
}

std::optional<std::int64_t> fileNumber(const std::string &path)
{
    return integerOf<std::int64_t>(trimmed(fileText(path)));
}

} // namespace swabby
