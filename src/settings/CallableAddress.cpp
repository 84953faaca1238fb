#include "settings/CallableAddress.h"

#include "platform/posix/LoopbackAddress.h"

namespace swabby {

bool mayBeCalled(const QUrl &address)
{
    const QString host = address.host();
    if (!address.isValid() || host.isEmpty())
        return false;
    return address.scheme() == QLatin1String("https") ||
           (address.scheme() == QLatin1String("http") &&
            (host == QLatin1String("localhost") || isLoopbackAddress(qPrintable(host))));
}

} // namespace swabby
