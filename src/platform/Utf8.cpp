#include "platform/Utf8.h"

#include <QtCore/QUtf8StringView>

namespace swabby {

bool isUtf8(std::string_view bytes)
{
    return QUtf8StringView(bytes.data(), static_cast<qsizetype>(bytes.size())).isValidUtf8();
}

} // namespace swabby
