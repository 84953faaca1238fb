#include "ui/presentation/NetworkText.h"

#include "ui/presentation/ProcessText.h"

#include <algorithm>
#include <numeric>

namespace swabby {

QString totalNetworkRate(const QList<ProcessSample> &users)
{
    return networkRate(std::accumulate(
        users.begin(), users.end(), std::int64_t(0),
        [](std::int64_t sum, const ProcessSample &user) { return sum + user.networkBytesPerSec; }));
}

QString networkSentence(const QList<ProcessSample> &users)
{
    const auto moving = std::count_if(users.begin(), users.end(),
                                      [](const ProcessSample &user) { return user.networkBytesPerSec > 0; });
    if (moving == 0)
        return QStringLiteral("Nothing is using the network right now.");
    return moving == 1 ? QStringLiteral("moving right now, 1 program")
                       : QStringLiteral("moving right now, %1 programs").arg(moving);
}

} // namespace swabby
