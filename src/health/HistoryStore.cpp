#include "health/HistoryStore.h"

#include "platform/posix/FolderLock.h"
#include "platform/posix/OwnFolder.h"
#include "platform/posix/SmallFile.h"
#include "platform/posix/WholeFile.h"

#include <QtCore/QDir>
#include <QtCore/QFile>
#include <QtCore/QJsonArray>
#include <QtCore/QJsonDocument>
#include <QtCore/QJsonObject>

#include <algorithm>
#include <cmath>

namespace swabby {
namespace {

/// The file counts its seconds from 2001-01-01 00:00 UTC.
constexpr double referenceDate = 978'307'200;

QString fileIn(const QString &folder)
{
    return folder.isEmpty() ? QString() : folder + QStringLiteral("/history.json");
}

/// No value unless every element is a point: half a foreign file is no history.
std::optional<History> pointsOf(const QByteArray &text)
{
    const QJsonDocument document = QJsonDocument::fromJson(text);
    if (!document.isArray())
        return std::nullopt;
    const QJsonArray stored = document.array();
    History points;
    points.reserve(stored.size());
    for (const QJsonValue &element : stored) {
        const QJsonObject point = element.toObject();
        const QJsonValue date = point.value(QLatin1String("date"));
        const QJsonValue cpu = point.value(QLatin1String("cpu"));
        const QJsonValue mem = point.value(QLatin1String("mem"));
        if (!date.isDouble() || !cpu.isDouble() || !mem.isDouble())
            return std::nullopt;
        points.append({date.toDouble() + referenceDate, cpu.toDouble(), mem.toDouble()});
    }
    return points;
}

History lastDay(const History &points, double now)
{
    History kept;
    kept.reserve(points.size());
    std::copy_if(points.begin(), points.end(), std::back_inserter(kept),
                 [&](const HistoryPoint &point) { return point.date >= now - historySpanSeconds; });
    return kept;
}

void appendNumber(QByteArray &text, double number)
{
    text += QByteArray::number(std::isfinite(number) ? number : 0, 'g', QLocale::FloatingPointShortest);
}

QByteArray jsonOf(const History &points)
{
    constexpr qsizetype bytesPerPoint = 80;
    QByteArray text = "[";
    text.reserve(points.size() * bytesPerPoint);
    for (const HistoryPoint &point : points) {
        text += text.size() == 1 ? "{\"date\":" : ",{\"date\":";
        appendNumber(text, point.date - referenceDate);
        text += ",\"cpu\":";
        appendNumber(text, point.cpu);
        text += ",\"mem\":";
        appendNumber(text, point.mem);
        text += '}';
    }
    return text += ']';
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
    return lastDay(pointsOf(text).value_or(History()), now);
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
    return saveWholeFile(fileIn(folder), jsonOf(lastDay(points, now)));
}

} // namespace swabby
