#pragma once

#include "platform/FileIdentity.h"
#include "platform/posix/Descriptor.h"

#include <cstddef>
#include <cstdint>
#include <filesystem>
#include <optional>

namespace swabby {

/// A regular file that is open for reading. Reading blocks for as long as the disk does; opening never waits
/// for anything else, since a pipe, a socket or a device is not opened and a link is not followed.
class RegularFile {
public:
    /// No value when it is no regular file or may not be read, which errno tells of then.
    static std::optional<RegularFile> open(const std::filesystem::path &path);
    /// The same of a name in a folder that is open under this descriptor, which was a regular file a moment
    /// ago: opening it is the first that is done with it.
    static std::optional<RegularFile> openIn(int folder, const char *name);

    /// What it was when it was opened.
    const FileIdentity &identity() const { return m_identity; }
    /// Fills the buffer from there on. False when it cannot be read or ends before.
    bool readAt(std::int64_t offset, char *buffer, std::size_t size) const;
    /// Tells the system that all of it will be read in turn.
    void expectWholeReading() const;
    /// Whether it was written to since it was opened, also when its time was set back.
    bool hasChanged() const;

private:
    RegularFile(Descriptor file, const FileIdentity &identity) : m_file(std::move(file)), m_identity(identity)
    {
    }

    Descriptor m_file;
    FileIdentity m_identity;
};

} // namespace swabby
