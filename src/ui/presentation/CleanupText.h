#pragma once

#include "cleanup/CleanupReport.h"
#include "engine/SystemStats.h"
#include "flows/cleanup/StorageScans.h"
#include "ui/presentation/ConfirmationText.h"
#include "ui/presentation/ProgramTile.h"

#include <QtCore/QList>
#include <QtCore/QObject>
#include <QtQmlIntegration/qqmlintegration.h>

#include <memory>

namespace swabby {

/// What is behind an item: put into words only for a row that unfolds, for a list may have thousands.
class BehindItem {
public:
    BehindItem() = default;
    /// The home folder is written "~".
    BehindItem(const RemovableItemKind &kind, const QString &home);

    /// Where it is, as far as it is a file; empty when that is nowhere in particular.
    QList<RemovalDetail> details() const;
    /// Whether there are any.
    bool isSomewhere() const { return m_kind != nullptr; }
    bool operator==(const BehindItem &other) const;

private:
    std::shared_ptr<const RemovableItemKind> m_kind;
    QString m_home;
};

/// Something that can be removed, as its row shows it.
struct RemovableRowText {
    Q_GADGET
    QML_VALUE_TYPE(removableRowText)
    Q_PROPERTY(QString id MEMBER id)
    Q_PROPERTY(QString title MEMBER title)
    Q_PROPERTY(QString subtitle MEMBER subtitle)
    Q_PROPERTY(QString size MEMBER size)
    Q_PROPERTY(bool isSelected MEMBER isSelected)
    Q_PROPERTY(bool isBusy MEMBER isBusy)
    Q_PROPERTY(bool isRunning MEMBER isRunning)
    Q_PROPERTY(swabby::ProgramTile tile MEMBER tile)
    Q_PROPERTY(QString badgeSymbol MEMBER badgeSymbol)
    Q_PROPERTY(QString badgeHint MEMBER badgeHint)
    Q_PROPERTY(bool badgeWarns MEMBER badgeWarns)
    Q_PROPERTY(bool hasDetails READ hasDetails)

public:
    QString id;
    QString title;
    QString subtitle;
    QString size;
    bool isSelected = false;
    bool isBusy = false;
    bool isRunning = false; ///< an application that has to be quit first
    ProgramTile tile;
    QString badgeSymbol; ///< empty: no badge
    QString badgeHint;   ///< the badge in words
    bool badgeWarns = false;
    BehindItem behind;

    bool hasDetails() const { return behind.isSomewhere(); }
    Q_INVOKABLE QList<swabby::RemovalDetail> details() const { return behind.details(); }

    bool operator==(const RemovableRowText &) const = default;
};

/// How a search stands, as the card it fills shows it.
struct ScanText {
    Q_GADGET
    QML_VALUE_TYPE(scanText)
    Q_PROPERTY(QString symbol MEMBER symbol)
    Q_PROPERTY(QString title MEMBER title)
    Q_PROPERTY(QString subtitle MEMBER subtitle)
    Q_PROPERTY(bool isScanning MEMBER isScanning)
    Q_PROPERTY(QString progress MEMBER progress)
    Q_PROPERTY(double fraction MEMBER fraction)
    Q_PROPERTY(QString action MEMBER action)
    Q_PROPERTY(QString empty MEMBER empty)

public:
    QString symbol;
    QString title;
    QString subtitle;
    bool isScanning = false;
    QString progress;    ///< what is being looked at
    double fraction = 0; ///< how far it is, 0–1; 0 while unknown
    QString action;      ///< on the button that begins it, or ends it
    QString empty;       ///< said when it found nothing; else empty

    bool operator==(const ScanText &) const = default;
};

/// The home folder is written "~" in the details.
RemovableRowText removableRowText(const RemovableItem &item, bool isSelected, const QString &home);

/// Makes the row one of a suggested cache: the assistant's verdict as a badge, its reason as text.
void addVerdict(RemovableRowText &row, const SuggestedCache &suggestion);

/// The words for what is being looked at; a name by itself would say nothing.
QString lookingAtText(const QString &what);
double fractionOf(const ScanProgress &progress);

/// The card of a search that was or was not run to its end. firstAction stands on the button until then.
ScanText scanText(bool isScanning, bool isDone, const ScanProgress &progress, const QString &firstAction);
/// The same of one of these searches, with what its card is called.
ScanText scanText(const StorageScans &scans, ClutterKind kind);
/// Makes the row one of an application: what goes with it is known once it has been looked for.
void describeApplication(RemovableRowText &row, const RemovableItem &item, const StorageScans &scans);
/// "free of 500 GB".
QString totalText(const SystemStats &stats);
/// What the queue is for.
QString queueNoteText(const MachineWords &words);
/// "Open Software" for a program of that name; empty for none.
QString softwareManagerText(const QString &name);
/// What left this computer for the suggestions, and to where; empty when nothing did.
QString suggestionsNoteText(const StorageScans::Findings &found);

/// "1 item", "3 items".
QString itemCountText(std::int64_t count);
/// "3 items · 5.1 GB".
QString chosenText(const std::vector<RemovableItem> &chosen);
/// "Cleanup Queue · 3 items · 5.1 GB".
QString queueText(const std::vector<RemovableItem> &queue);
/// What a removal does or did; empty when that is no news.
QString removalText(bool isRemoving, const std::optional<CleanupReport> &last);
/// How a put-back went.
QString putBackText(std::int64_t restored, std::int64_t left);
/// "14.2 GB can be cleared: caches and duplicates", of all of these together; empty when that is nothing.
QString clearableText(const std::vector<RemovableItem> &items);
/// The same of what takes room on the volume that is shown: "14.2 GB of what is used can be cleared: …".
QString clearableOfUsedText(const std::vector<RemovableItem> &items);

} // namespace swabby
