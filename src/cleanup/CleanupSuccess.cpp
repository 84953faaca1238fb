#include "cleanup/CleanupSuccess.h"

#include "engine/ByteCount.h"

namespace swabby {

QString bannerText(const CleanupSuccess &success)
{
    return QStringLiteral("Removed ") + QString::number(success.itemCount) + QStringLiteral(" item") +
           (success.itemCount == 1 ? QString() : QStringLiteral("s")) + QStringLiteral(" — freed ") +
           fileByteCount(success.freedBytes);
}

QString leftText(const CleanupSuccess &success)
{
    if (success.left == 0)
        return {};
    return success.left == 1
               ? QStringLiteral("One of them is still here, at least in part.")
               : QString::number(success.left) + QStringLiteral(" of them are still here, at least in part.");
}

} // namespace swabby
