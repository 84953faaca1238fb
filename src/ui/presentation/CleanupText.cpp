#include "ui/presentation/CleanupText.h"

#include "cleanup/RemovalRun.h"
#include "engine/ByteCount.h"
#include "engine/SaturatedBytes.h"
#include "platform/FolderListing.h"
#include "ui/presentation/PlainWords.h"

#include <algorithm>

namespace swabby {

RemovableRowText removableRowText(const RemovableItem &item, bool isSelected, const QString &home)
{
    RemovableRowText row;
    row.id = item.id;
    row.title = oneLine(item.title);
    row.subtitle = oneLine(item.subtitle);
    row.size = fileByteCount(item.sizeBytes);
    row.isSelected = isSelected;
    for (const RemovalDetail &detail : removalDetails(item, home))
        if (!detail.place.isEmpty())
            row.details.append(detail);
    return row;
}

void addVerdict(RemovableRowText &row, const SuggestedCache &suggestion)
{
    row.subtitle = QStringLiteral("Suggested · ") + oneLine(suggestion.reason);
    row.badgeWarns = !suggestion.looksSafe;
    row.badgeSymbol =
        suggestion.looksSafe ? QStringLiteral("checkmark.seal") : QStringLiteral("questionmark.circle");
    row.badgeHint = suggestion.looksSafe ? QStringLiteral("Looks safe") : QStringLiteral("Not sure");
}

QString lookingAtText(const QString &what)
{
    return what.isEmpty() ? QStringLiteral("Looking…") : QStringLiteral("Looking at ") + oneLine(what);
}

double fractionOf(const ScanProgress &progress)
{
    if (progress.total <= 0)
        return 0;
    return std::clamp(static_cast<double>(progress.done) / static_cast<double>(progress.total), 0.0, 1.0);
}

ScanText scanText(bool isScanning, bool isDone, const ScanProgress &progress, const QString &firstAction)
{
    ScanText text;
    text.isScanning = isScanning;
    text.action = isDone ? QStringLiteral("Scan again") : firstAction;
    if (isScanning) {
        text.progress = lookingAtText(progress.what);
        text.fraction = fractionOf(progress);
    }
    return text;
}

ScanText scanText(const StorageScans &scans, ClutterKind kind, const QString &firstAction,
                  const QString &empty)
{
    ScanText text = scanText(scans.isScanning(kind), scans.isDone(kind), scans.progress(kind), firstAction);
    if (scans.isDone(kind) && !scans.isScanning(kind) && scans.findings(kind).isEmpty())
        text.empty = empty;
    return text;
}

QString itemCountText(std::int64_t count)
{
    return QString::number(count) + (count == 1 ? QStringLiteral(" item") : QStringLiteral(" items"));
}

QString queueText(const std::vector<RemovableItem> &queue)
{
    if (queue.empty())
        return QStringLiteral("Cleanup Queue · empty");
    return QStringLiteral("Cleanup Queue · ") + itemCountText(static_cast<std::int64_t>(queue.size())) +
           QStringLiteral(" · ") + fileByteCount(totalBytes(queue));
}

QString putBackText(std::int64_t restored, std::int64_t left)
{
    if (left > 0)
        return itemCountText(left) + QStringLiteral(" could not be put back and stayed in the Trash.");
    return itemCountText(restored) + (restored == 1 ? QStringLiteral(" is") : QStringLiteral(" are")) +
           QStringLiteral(" back in place.");
}

std::int64_t clearableBytes(const std::vector<RemovableItem> &items)
{
    std::vector<const CacheEntry *> caches;
    for (const RemovableItem &item : items)
        if (const auto *entry = std::get_if<CacheEntry>(&item.kind))
            caches.push_back(entry);
    const auto isInAnother = [&](const CacheEntry &entry) {
        return std::any_of(caches.begin(), caches.end(),
                           [&](const CacheEntry *other) { return isUnder(entry.path, other->path); });
    };
    std::int64_t total = 0;
    for (const RemovableItem &item : items) {
        const auto *entry = std::get_if<CacheEntry>(&item.kind);
        if (entry == nullptr || !isInAnother(*entry))
            total = saturatedSum(total, item.sizeBytes);
    }
    return total;
}

QString clearableText(std::int64_t bytes)
{
    return bytes > 0 ? fileByteCount(bytes) + QStringLiteral(" of what is used can be cleared") : QString();
}

} // namespace swabby
