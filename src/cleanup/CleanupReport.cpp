#include "cleanup/CleanupReport.h"

#include "engine/ByteCount.h"

#include <QtCore/QStringList>

#include <algorithm>

namespace swabby {

QString bannerText(const CleanupReport &report)
{
    if (!report.problem.isEmpty())
        return QStringLiteral("Nothing was removed");
    return QStringLiteral("Removed ") + QString::number(report.itemCount) + QStringLiteral(" item") +
           (report.itemCount == 1 ? QString() : QStringLiteral("s")) + QStringLiteral(" — freed ") +
           fileByteCount(report.freedBytes);
}

QString leftText(const CleanupReport &report)
{
    if (!report.problem.isEmpty())
        return report.problem + QLatin1Char('.');
    constexpr std::size_t mostNames = 3;
    const std::size_t count = report.left.size();
    if (count == 0)
        return {};
    QStringList names;
    for (std::size_t index = 0; index < std::min(count, mostNames); ++index)
        names.append(report.left[index].title);
    const QString last =
        count > mostNames ? QString::number(count - mostNames) + QStringLiteral(" more") : names.takeLast();
    const QString all =
        names.isEmpty() ? last : names.join(QStringLiteral(", ")) + QStringLiteral(" and ") + last;
    return all + (count == 1 ? QStringLiteral(" is") : QStringLiteral(" are")) +
           QStringLiteral(" still here, at least in part.") +
           (report.isRecordable ? QString()
                                : QStringLiteral(" Nothing goes to the Trash while Swabby cannot write down "
                                                 "where it was. Is the disk full?"));
}

} // namespace swabby
