#pragma once

#include "platform/linux/KernelFile.h"

#include <sys/stat.h>

#include <memory>
#include <string>
#include <unordered_map>

namespace swabby {

/// What was made of files, kept until a file changes: another inode, size or time of its last change. Not
/// safe for several threads at once.
template <typename Value>
class FileCache {
public:
    /// What parse makes of the file's text; null for a file that cannot be looked at.
    template <typename Parse>
    std::shared_ptr<const Value> get(const std::string &path, Parse parse)
    {
        struct stat status = {};
        if (::stat(path.c_str(), &status) != 0 || !S_ISREG(status.st_mode)) {
            m_entries.erase(path);
            return nullptr;
        }
        const Stamp stamp = {status.st_ino, status.st_size, status.st_mtim.tv_sec, status.st_mtim.tv_nsec};
        Entry &entry = m_entries[path];
        if (!entry.value || entry.stamp != stamp)
            entry = {stamp, std::make_shared<const Value>(parse(fileText(path)))};
        return entry.value;
    }

private:
    struct Stamp {
        ino_t inode = 0;
        off_t size = 0;
        time_t seconds = 0;
        long nanoseconds = 0;
        bool operator==(const Stamp &) const = default;
    };
    struct Entry {
        Stamp stamp;
        std::shared_ptr<const Value> value;
    };

    std::unordered_map<std::string, Entry> m_entries;
};

} // namespace swabby
