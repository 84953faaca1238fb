#pragma once

#include "cleanup/DuplicateFinder.h"

#include <QtCore/QTemporaryDir>

#include <set>

namespace swabby {

using Path = std::filesystem::path;
using Paths = std::vector<Path>;

/// Two folders with files in them for as long as a test lasts.
struct DuplicateFolders {
    DuplicateFolders()
    {
        std::filesystem::create_directory(downloads());
        std::filesystem::create_directory(desktop());
    }
    /// The temporary folder cannot remove names that are no text itself.
    ~DuplicateFolders() { std::filesystem::remove_all(top()); }
    DuplicateFolders(const DuplicateFolders &) = delete;
    DuplicateFolders &operator=(const DuplicateFolders &) = delete;

    Path top() const { return m_folder.path().toStdString(); }
    Path downloads() const { return top() / "Downloads"; }
    Path desktop() const { return top() / "Desktop"; }
    Paths both() const { return {downloads(), desktop()}; }

    /// Writes what is named relative to the top.
    void write(const Path &name, const std::string &content) const
    {
        std::FILE *file = std::fopen((top() / name).c_str(), "wb");
        if (!file || std::fwrite(content.data(), 1, content.size(), file) != content.size())
            qFatal("cannot write %s", name.c_str());
        std::fclose(file);
    }

    std::vector<DuplicateGroup> scan(const ScanControl &control = {}) const
    {
        return DuplicateFinder::scan(both(), {}, control);
    }

private:
    QTemporaryDir m_folder;
};

/// Bytes that look like nothing in particular; another seed gives other ones throughout.
inline std::string contentOf(std::size_t size, unsigned seed = 1)
{
    std::string content(size, '\0');
    std::uint64_t state = seed * 0x9e3779b97f4a7c15U;
    for (char &byte : content) {
        state = state * 6364136223846793005U + 1442695040888963407U;
        byte = static_cast<char>(state >> 56);
    }
    return content;
}

/// The same with one byte changed.
inline std::string changedAt(const std::string &original, std::size_t place)
{
    std::string content = original;
    content.at(place) = static_cast<char>(content.at(place) ^ 1);
    return content;
}

} // namespace swabby
