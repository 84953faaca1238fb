#include "health/HistoryStore.h"

#include "health/HistoryText.h"
#include "platform/posix/FolderLock.h"
#include "platform/posix/OwnFolder.h"
#include "platform/posix/SmallFile.h"
#include "platform/posix/WholeFile.h"

#include <QtCore/QDir>
#include <QtCore/QFile>

#include <algorithm>

namespace swabby {
namespace {

QString fileIn(const QString &folder)
{
    return folder.isEmpty() ? QString() : folder + QStringLiteral("/history.json");
}

History lastDay(const History &points, double now)
{
    History kept;
    kept.reserve(points.size());
    std::copy_if(points.begin(), points.end(), std::back_inserter(kept),
                 [&](const HistoryPoint &point) { return point.date >= now - historySpanSeconds; });
    return kept;
}

} // namespace

QString HistoryStore::ensureFolder(const QString &applicationData)
{
    return !applicationData.isEmpty() && makeOwnFolder(applicationData) ? applicationData : QString();
}

History HistoryStore::load(const QString &applicationData, double now)
{
    // Nobody saves while the folder can be locked, so what looks like a torn save is one.
    if (const auto lock = FolderLock::tryLock(applicationData))
        sweep(applicationData);
    constexpr std::int64_t largestFile = 64'000'000;
    const QByteArray text = smallFile(QFile::encodeName(fileIn(applicationData)).toStdString(), largestFile);
    return lastDay(historyIn(text).value_or(History()), now);
}

void HistoryStore::sweep(const QString &applicationData)
{
    sweepStrays(fileIn(applicationData));
}

QString HistoryStore::save(const QString &applicationData, const History &points, double now)
{
    const QString folder = ensureFolder(applicationData);
    if (folder.isEmpty())
        return applicationData.isEmpty() ? QStringLiteral("there is no folder to keep it in")
                                         : QStringLiteral("%1 cannot be made").arg(applicationData);
    return saveWholeFile(fileIn(folder), textOfHistory(lastDay(points, now)));
}

} // namespace swabby
