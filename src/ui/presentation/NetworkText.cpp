#include "ui/presentation/NetworkText.h"

#include "engine/SaturatedBytes.h"

#include <algorithm>
#include <numeric>

namespace swabby {
namespace {

std::int64_t totalBytesPerSecond(const QList<ProcessSample> &users)
{
    return std::accumulate(users.begin(), users.end(), std::int64_t(0),
                           [](std::int64_t sum, const ProcessSample &user) {
                               return saturatedSum(sum, user.networkBytesPerSec);
                           });
}

} // namespace

QString totalNetworkRate(const QList<ProcessSample> &users)
{
    return networkRate(totalBytesPerSecond(users));
}

QList<ProcessRowText> networkRowTexts(const QList<ProcessSample> &found, const QList<ProcessSample> &users,
                                      const std::set<QString> &pinnedNames, const MachineWords &words)
{
    const std::int64_t total = totalBytesPerSecond(users);
    QList<ProcessRowText> rows = processRowTexts(found, ProcessRowMode::network, pinnedNames, words);
    for (qsizetype row = 0; total > 0 && row < rows.size(); ++row) {
        const double share =
            static_cast<double>(found.at(row).networkBytesPerSec) / static_cast<double>(total);
        rows[row].detail =
            rows.at(row).value + QStringLiteral(" · ") +
            (share < 0.005 ? QStringLiteral("under 1") : QString::number(qRound(share * 100))) +
            QStringLiteral("% of all") + programRemark(found.at(row));
    }
    return rows;
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
