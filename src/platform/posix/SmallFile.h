#pragma once

#include <QtCore/QByteArray>
#include <QtCore/QString>

#include <cstdint>
#include <filesystem>

namespace swabby {

/// What came of reading a file that is small when it is what it should be.
struct SmallFile {
    QByteArray content;
    bool isThere = false; ///< whether anything has that name, or nobody can tell
    QString problem;      ///< why it cannot be read, in a few words; empty when it was, or is not there
};

/// Reads a regular file whole, links followed; one larger than that, in bytes, is refused. Blocks for the
/// disk and nothing else: a pipe or a device is not opened.
SmallFile readSmallFile(const std::filesystem::path &path, std::int64_t largest);

/// The same where it does not matter why it cannot be read: empty then.
QByteArray smallFile(const std::filesystem::path &path, std::int64_t largest);

} // namespace swabby
