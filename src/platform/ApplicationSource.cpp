#include "platform/ApplicationSource.h"

namespace swabby {

bool isOneFileName(const QString &name)
{
    return !name.isEmpty() && name != QLatin1String(".") && name != QLatin1String("..") &&
           !name.contains(QLatin1Char('/')) && !name.contains(QChar(QChar::Null)) &&
           !name.contains(QChar(QChar::ReplacementCharacter));
}

} // namespace swabby
