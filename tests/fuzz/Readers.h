#pragma once

#include <QtCore/QByteArray>

#include <string_view>
#include <vector>

namespace swabby {

/// Something that reads text of other people's making. Its fixtures are the files of tests/fixtures/fuzz/NAME
/// and of tests/fixtures/NAME.
struct Reader {
    using Text = std::string_view;

    const char *name;
    /// Whether what was made of the text is what may be made of one: every figure in its range, nothing
    /// outside the places it may lead to, and what is written and read again the same.
    bool (*holds)(Text text);
};

using Readers = std::vector<Reader>;

// By the rooms that have them.
Readers macToolReaders();
Readers cleanupReaders();
Readers linuxReaders();
Readers kernelReaders();
Readers storedReaders();
Readers recordingReaders();

/// All of them.
Readers allReaders();

inline QByteArray bytesOf(std::string_view text)
{
    return {text.data(), static_cast<qsizetype>(text.size())};
}

} // namespace swabby
