#pragma once

#include "cleanup/DuplicateFinder.h"
#include "support/RandomTree.h"

#include <QtCore/QTemporaryDir>
#include <QtTest/QTest>

#include <set>
#include <sys/socket.h>
#include <sys/stat.h>
#include <sys/un.h>
#include <unistd.h>

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

/// Writes other bytes into the same file and sets its time back.
inline void rewriteSecretly(const Path &path)
{
    const auto time = std::filesystem::last_write_time(path);
    std::FILE *file = std::fopen(path.c_str(), "r+b");
    std::fputc('x', file);
    std::fputc('y', file);
    std::fclose(file);
    std::filesystem::last_write_time(path, time);
}

inline void makeSocket(const Path &path)
{
    sockaddr_un address = {};
    address.sun_family = AF_UNIX;
    path.native().copy(address.sun_path, sizeof address.sun_path - 1);
    const int number = ::socket(AF_UNIX, SOCK_STREAM, 0);
    QCOMPARE(::bind(number, reinterpret_cast<sockaddr *>(&address), sizeof address), 0);
    ::close(number);
}

/// Makes what the words name: a file, FOLDER/, LINK->TARGET, SECOND=FIRST for a hard link, a pipe! or a
/// socket?; -PLACE goes again, +PLACE grows by a byte, and ~PLACE gets other bytes and its old time.
inline void build(const Path &top, const QByteArray &words, const std::string &content)
{
    namespace fs = std::filesystem;
    for (const QByteArray &word : words.split(' ')) {
        const std::string name = word.toStdString();
        const std::size_t arrow = name.find("->"), equals = name.find('=');
        const Path place = top / name.substr(0, name.size() - 1);
        if (arrow != std::string::npos)
            fs::create_symlink(name.substr(arrow + 2), top / name.substr(0, arrow));
        else if (equals != std::string::npos)
            fs::create_hard_link(top / name.substr(equals + 1), top / name.substr(0, equals));
        else if (name.ends_with('/'))
            fs::create_directory(place);
        else if (name.ends_with('!'))
            QCOMPARE(::mkfifo(place.c_str(), 0600), 0);
        else if (name.ends_with('?'))
            makeSocket(place);
        else if (name.starts_with('-'))
            fs::remove_all(top / name.substr(1));
        else if (name.starts_with('+'))
            fs::resize_file(top / name.substr(1), content.size() + 1);
        else if (name.starts_with('~'))
            rewriteSecretly(top / name.substr(1));
        else
            writeBytes(top / name, content);
    }
}

} // namespace swabby
