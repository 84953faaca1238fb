#include "ui/presentation/CleanupText.h"

#include "cleanup/Overlaps.h"
#include "engine/ByteCount.h"
#include "ui/presentation/PlainWords.h"

#include <algorithm>
#include <set>

namespace swabby {
namespace {

/// What a card says before its search has found anything.
struct ClutterCard {
    ClutterKind kind;
    const char *symbol;
    const char *title;
    const char *subtitle;
    const char *firstAction;
    const char *empty;
};

constexpr ClutterCard clutterCards[] = {
    {ClutterKind::quickClean, "trash", "Quick Clean", "Regenerates automatically", "Scan",
     "No cache worth clearing was found."},
    {ClutterKind::duplicates, "doc.on.doc", "Duplicates", "Finds exact duplicates in Downloads and Desktop.",
     "Scan for duplicates", "No duplicates found."},
    {ClutterKind::forgottenFiles, "clock", "Forgotten files",
     "Finds large, unused files untouched for months.", "Scan", "No large old files found."},
    {ClutterKind::applications, "square.grid.2x2", "App Uninstaller",
     "Remove an app along with the caches, preferences, and support files it leaves behind.",
     "Show installed apps", "No applications that could be removed."},
    {ClutterKind::developer, "hammer", "", "See how much space your developer tools hold on to.",
     "Scan developer clutter", "No developer clutter found."},
};

const ClutterCard &cardOf(ClutterKind kind)
{
    return *std::find_if(std::begin(clutterCards), std::end(clutterCards),
                         [kind](const ClutterCard &card) { return card.kind == kind; });
}

/// What a kind of thing is called in a sum, in the order of the kinds.
struct KindNames {
    QString operator()(const CacheEntry &entry) const
    {
        return entry.isBuildTool ? QStringLiteral("build tool caches") : QStringLiteral("caches");
    }
    QString operator()(const DuplicateGroup &) const { return QStringLiteral("duplicates"); }
    QString operator()(const SimulatorRuntimeInfo &) const { return QStringLiteral("simulator runtimes"); }
    QString operator()(const DerivedData &) const { return QStringLiteral("build cache"); }
    QString operator()(const DockerPrune &) const { return QStringLiteral("Docker"); }
    QString operator()(const DeepScanItem &) const { return QStringLiteral("forgotten files"); }
    QString operator()(const AppUninstall &) const { return QStringLiteral("apps"); }
};

/// "caches, duplicates and Docker"; what frees nothing is no part of a sum.
QString kindsText(const std::vector<RemovableItem> &items)
{
    std::set<std::pair<std::size_t, QString>> kinds;
    for (const RemovableItem &item : items)
        if (item.sizeBytes > 0)
            kinds.insert({item.kind.index(), std::visit(KindNames(), item.kind)});
    QStringList names;
    for (const auto &[place, name] : kinds)
        names.append(name);
    if (names.size() < 2)
        return names.join(QString());
    const QString last = names.takeLast();
    return names.join(QStringLiteral(", ")) + QStringLiteral(" and ") + last;
}

QString clearableText(const std::vector<RemovableItem> &items, const QString &verb)
{
    const std::int64_t bytes = bytesTogether(items);
    return bytes > 0 ? fileByteCount(bytes) + verb + kindsText(items) : QString();
}

} // namespace

BehindItem::BehindItem(const RemovableItemKind &kind, const QString &home) : m_home(home)
{
    const bool isNowhere = std::holds_alternative<SimulatorRuntimeInfo>(kind) ||
                           std::holds_alternative<DerivedData>(kind) ||
                           std::holds_alternative<DockerPrune>(kind);
    if (!isNowhere)
        m_kind = std::make_shared<const RemovableItemKind>(kind);
}

QList<RemovalDetail> BehindItem::details() const
{
    QList<RemovalDetail> details;
    if (m_kind == nullptr)
        return details;
    for (const RemovalDetail &detail : removalDetails(*m_kind, m_home))
        if (!detail.place.isEmpty())
            details.append(detail);
    return details;
}

bool BehindItem::operator==(const BehindItem &other) const
{
    if (m_kind == nullptr || other.m_kind == nullptr)
        return m_kind == other.m_kind;
    return *m_kind == *other.m_kind && m_home == other.m_home;
}

RemovableRowText removableRowText(const RemovableItem &item, bool isSelected, const QString &home)
{
    RemovableRowText row;
    row.id = item.id;
    row.title = oneLine(item.title);
    row.subtitle = oneLine(item.subtitle);
    row.size = fileByteCount(item.sizeBytes);
    row.isSelected = isSelected;
    row.behind = BehindItem(item.kind, home);
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
    text.action = isScanning ? QStringLiteral("Stop") : isDone ? QStringLiteral("Scan again") : firstAction;
    if (isScanning) {
        text.progress = lookingAtText(progress.what);
        text.fraction = fractionOf(progress);
    }
    return text;
}

ScanText scanText(const StorageScans &scans, ClutterKind kind)
{
    const ClutterCard &card = cardOf(kind);
    ScanText text = scanText(scans.isScanning(kind), scans.isDone(kind), scans.progress(kind),
                             QString::fromUtf8(card.firstAction));
    text.symbol = QString::fromUtf8(card.symbol);
    text.title = QString::fromUtf8(card.title);
    text.subtitle = QString::fromUtf8(card.subtitle);
    if (scans.isDone(kind) && !scans.isScanning(kind) && scans.findings(kind).isEmpty())
        text.empty = scans.findings(kind).problem.isEmpty() ? QString::fromUtf8(card.empty)
                                                            : sentence(scans.findings(kind).problem);
    return text;
}

void describeApplication(RemovableRowText &row, const RemovableItem &item, const StorageScans &scans)
{
    row.isRunning = scans.findings(ClutterKind::applications).running.contains(item.id);
    row.subtitle = row.isRunning ? QStringLiteral("Running — quit it first") : QString();
    row.behind = {};
    if (const auto *uninstall = std::get_if<AppUninstall>(&item.kind))
        row.tile = tileOf(item.title, uninstall->app.path);
    row.isBusy = scans.isPrepared(item.id);
}

QString totalText(const SystemStats &stats)
{
    return QStringLiteral("free of ") + fileByteCount(stats.diskTotalBytes) + volumeText(stats);
}

QString queueNoteText(const MachineWords &words)
{
    return QStringLiteral("Anything you choose to remove goes into the Cleanup Queue first. Review the "
                          "list, then clean up everything in one %1 when you're ready.")
        .arg(words.press);
}

QString softwareManagerText(const QString &name)
{
    return name.isEmpty() ? QString() : QStringLiteral("Open ") + oneLine(name);
}

QString suggestionsNoteText(const StorageScans::Findings &found)
{
    if (!found.wasSent)
        return {};
    const QString whom = found.host.isEmpty() ? QStringLiteral("Claude") : found.host;
    return found.failure
               ? QStringLiteral("Only the folders' names and sizes were sent to %1.").arg(whom)
               : QStringLiteral(
                     "The suggestions were checked by %1 — only the folders' names and sizes were sent.")
                     .arg(whom);
}

QString itemCountText(std::int64_t count)
{
    return QString::number(count) + (count == 1 ? QStringLiteral(" item") : QStringLiteral(" items"));
}

QString chosenText(const std::vector<RemovableItem> &chosen)
{
    return itemCountText(static_cast<std::int64_t>(chosen.size())) + QStringLiteral(" · ") +
           fileByteCount(bytesTogether(chosen));
}

QString queueText(const std::vector<RemovableItem> &queue)
{
    return QStringLiteral("Cleanup Queue · ") + (queue.empty() ? QStringLiteral("empty") : chosenText(queue));
}

QString removalText(bool isRemoving, const std::optional<CleanupReport> &last)
{
    if (isRemoving)
        return QStringLiteral("Removing…");
    return last ? bannerText(*last) : QString();
}

QString putBackText(std::int64_t restored, std::int64_t left)
{
    if (left > 0)
        return itemCountText(left) + QStringLiteral(" could not be put back and stayed in the Trash.");
    return itemCountText(restored) + (restored == 1 ? QStringLiteral(" is") : QStringLiteral(" are")) +
           QStringLiteral(" back in place.");
}

QString clearableText(const std::vector<RemovableItem> &items)
{
    return clearableText(items, QStringLiteral(" can be cleared: "));
}

QString clearableOfUsedText(const std::vector<RemovableItem> &items)
{
    return clearableText(items, QStringLiteral(" of what is used can be cleared: "));
}

} // namespace swabby
