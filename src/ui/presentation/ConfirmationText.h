#pragma once

#include "flows/cleanup/ConfirmationBuilder.h"
#include "ui/presentation/ProgramTile.h"
#include "ui/presentation/Tint.h"

#include <QtCore/QList>
#include <QtCore/QObject>
#include <QtQmlIntegration/qqmlintegration.h>

#include <set>

namespace swabby {

/// One of the things behind an item, before it goes.
struct RemovalDetail {
    Q_GADGET
    QML_VALUE_TYPE(removalDetail)
    Q_PROPERTY(QString name MEMBER name)
    Q_PROPERTY(QString place MEMBER place)
    Q_PROPERTY(QString fate MEMBER fate)
    Q_PROPERTY(QString path MEMBER path)
    Q_PROPERTY(bool stays MEMBER stays)

public:
    QString name;
    QString place; ///< the folder it lies in, for people
    QString fate;  ///< "stays", "to the Trash", "deleted"
    QString path;  ///< to show it by; empty when it is no file, or its name is no text
    bool stays = false;

    bool operator==(const RemovalDetail &) const = default;
};

/// Everything that an item's removal touches, and what it leaves on purpose. The home folder is written "~".
QList<RemovalDetail> removalDetails(const RemovableItemKind &kind, const QString &home);

/// A line of the question before a removal: one of the items, or, unfolded below it, one of the things behind
/// it.
struct RemovalLine {
    Q_GADGET
    QML_VALUE_TYPE(removalLine)
    Q_PROPERTY(int item MEMBER item)
    Q_PROPERTY(bool isItem MEMBER isItem)
    Q_PROPERTY(bool isUnfolded MEMBER isUnfolded)
    Q_PROPERTY(bool isInGroup MEMBER isInGroup)
    Q_PROPERTY(QString title MEMBER title)
    Q_PROPERTY(QString note MEMBER note)
    Q_PROPERTY(bool isForGood MEMBER isForGood)
    Q_PROPERTY(QString size MEMBER size)
    Q_PROPERTY(swabby::RemovalDetail detail MEMBER detail)

public:
    QString key;  ///< the same whatever is unfolded
    int item = 0; ///< its place among the items
    bool isItem = false;
    bool isUnfolded = false;
    bool isInGroup = false; ///< below its item's line
    QString title;
    QString note;           ///< what its removal does
    bool isForGood = false; ///< and no way leads back from it
    QString size;
    RemovalDetail detail; ///< of a line that is no item

    bool operator==(const RemovalLine &) const = default;
};

/// Every item, and what is behind those that are unfolded: first what goes, then what stays. A single item
/// is named in the question itself, so that only what is behind it is listed.
QList<RemovalLine> removalLines(const std::vector<RemovableItem> &items, const std::set<int> &unfolded,
                                const QString &home);

/// A question as its sheet shows it.
struct ConfirmationText {
    Q_GADGET
    QML_VALUE_TYPE(confirmationText)
    Q_PROPERTY(QString title MEMBER title)
    Q_PROPERTY(QString message MEMBER message)
    Q_PROPERTY(QString warning MEMBER warning)
    Q_PROPERTY(QString confirmLabel MEMBER confirmLabel)
    Q_PROPERTY(swabby::ProgramTile tile MEMBER tile)
    Q_PROPERTY(QString trust MEMBER trust)
    Q_PROPERTY(QString trustSymbol MEMBER trustSymbol)
    Q_PROPERTY(QString recommendation MEMBER recommendation)
    Q_PROPERTY(int recommendationTint READ recommendationTintIndex)

public:
    QString title;
    QString message;
    QString warning; ///< beneath it; empty when there is none
    QString confirmLabel;
    ProgramTile tile; ///< the program's; without a letter for a removal
    QString trust;    ///< "Trust 65 of 100"; empty for a removal
    QString trustSymbol;
    QString recommendation;
    Tint recommendationTint = Tint::green;

    int recommendationTintIndex() const { return static_cast<int>(recommendationTint); }
    bool operator==(const ConfirmationText &) const = default;
};

/// The tile is that of the program to quit.
ConfirmationText confirmationText(const ConfirmationInfo &info, const ProgramTile &tile = {});

/// What the container engine can do without.
QString dockerClutterText();
/// "Trust 65 of 100".
QString trustText(int trustRatio);
/// "Quit Render Studio"; empty for no program.
QString quitLabelText(const QString &programName);

Tint tintOf(ActionRecommendation recommendation);

} // namespace swabby
