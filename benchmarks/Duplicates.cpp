// Makes folders with duplicates in them, and searches folders for duplicates in a process of its own, so that
// it can be timed beside other programs:
//
//     swabby_duplicates make small|large|mixed FOLDER
//     swabby_duplicates scan FOLDER…    prints groups, paths in them, and peak memory above idle in kB

#include "cleanup/DuplicateFinder.h"

#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <fstream>
#include <random>
#include <stdexcept>

namespace {

using namespace swabby;
using Path = std::filesystem::path;

struct FileRecipe {
    std::uint64_t seed;  ///< of the bytes
    std::size_t size;    ///< bytes
    bool hasOtherMiddle; ///< one byte in the middle differs
};

class TreeMaker {
public:
    explicit TreeMaker(const Path &folder)
    {
        for (const char *name : {"Downloads", "Desktop"})
            std::filesystem::create_directories(m_folders.emplace_back(folder / name));
    }

    /// Of a hundred files about 30 are copies; 15 others share a size, 5 of them both ends too.
    void add(int count, std::size_t smallest, std::size_t largest)
    {
        std::vector<FileRecipe> made;
        std::uniform_int_distribution<std::size_t> sizes(smallest, largest);
        for (int number = 0; number < count; ++number) {
            FileRecipe recipe = {m_random(), sizes(m_random), false};
            const auto share = static_cast<int>(m_random() % 100);
            if (share < 50 && !made.empty()) {
                const FileRecipe &earlier = made[m_random() % made.size()];
                if (share < 30)
                    recipe = earlier;
                else if (share < 40)
                    recipe.size = earlier.size;
                else if (share < 45)
                    recipe = {earlier.seed, earlier.size, !earlier.hasOtherMiddle};
            }
            made.push_back(recipe);
            write(recipe);
        }
    }

private:
    void write(const FileRecipe &recipe)
    {
        std::mt19937_64 bytes(recipe.seed);
        m_content.resize(recipe.size / sizeof(std::uint64_t) + 1);
        for (std::uint64_t &word : m_content)
            word = bytes();
        if (recipe.hasOtherMiddle)
            m_content[m_content.size() / 2] ^= 1;
        std::ofstream file(m_folders[m_random() % 2] / ("file " + std::to_string(m_written++)),
                           std::ios::binary);
        file.write(reinterpret_cast<const char *>(m_content.data()),
                   static_cast<std::streamsize>(recipe.size));
        if (!file.flush())
            throw std::runtime_error("the disk is full");
    }

    std::vector<Path> m_folders;
    std::mt19937_64 m_random{7};
    std::vector<std::uint64_t> m_content;
    int m_written = 0;
};

int make(std::string_view kind, const Path &folder)
{
    constexpr std::size_t kilobyte = 1'024;
    constexpr std::size_t megabyte = 1'024 * kilobyte;
    TreeMaker tree(folder);
    if (kind == "small")
        tree.add(20'000, 5 * kilobyte, 64 * kilobyte);
    if (kind == "large")
        tree.add(300, 5 * megabyte, 60 * megabyte);
    if (kind == "mixed") {
        tree.add(5'000, 5 * kilobyte, 64 * kilobyte);
        tree.add(100, 5 * megabyte, 60 * megabyte);
    }
    return 0;
}

/// The process's memory that the kernel reports under that name, in kB.
long memory(const char *name)
{
    std::ifstream status("/proc/self/status");
    for (std::string line; std::getline(status, line);)
        if (line.starts_with(name))
            return std::atol(line.c_str() + std::strlen(name));
    return 0;
}

int scan(const std::vector<Path> &folders)
{
    const long idle = memory("VmRSS:");
    const auto groups = DuplicateFinder::scan(folders, {}, {});
    std::size_t paths = 0;
    for (const DuplicateGroup &group : groups)
        paths += group.paths.size();
    std::printf("%zu %zu %ld\n", groups.size(), paths, memory("VmHWM:") - idle);
    return 0;
}

} // namespace

int main(int count, char **arguments)
{
    const std::string_view verb = count > 2 ? arguments[1] : "";
    if (verb == "make" && count == 4)
        return make(arguments[2], arguments[3]);
    if (verb == "scan")
        return scan({arguments + 2, arguments + count});
    std::fputs("usage: swabby_duplicates make small|large|mixed FOLDER | scan FOLDER…\n", stderr);
    return 2;
}
