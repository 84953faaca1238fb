#pragma once

#include <QtCore/QString>

#include <string_view>

namespace swabby {

/// Whether the bytes are valid UTF-8 from end to end.
bool isUtf8(std::string_view bytes);

/// The text of bytes; what is no UTF-8 becomes replacement characters.
inline QString textOf(std::string_view bytes)
{
    return QString::fromUtf8(bytes.data(), static_cast<qsizetype>(bytes.size()));
}

} // namespace swabby
