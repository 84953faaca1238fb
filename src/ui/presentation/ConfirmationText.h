#pragma once

#include "flows/cleanup/ConfirmationBuilder.h"
#include "ui/presentation/Tint.h"

#include <QtCore/QList>
#include <QtCore/QObject>
#include <QtQmlIntegration/qqmlintegration.h>

namespace swabby {

/// One of the things behind an item, before it goes.
struct RemovalDetail {
    Q_GADGET
    QML_VALUE_TYPE(removalDetail)
    Q_PROPERTY(QString name MEMBER name)
    Q_PROPERTY(QString place MEMBER place)
    Q_PROPERTY(QString fate MEMBER fate)
    Q_PROPERTY(QString path MEMBER path)

public:
    QString name;
    QString place; ///< the folder it lies in, for people
    QString fate;  ///< "stays", "to the Trash", "deleted"
    QString path;  ///< to show it by; empty when it is no file, or its name is no text

    bool operator==(const RemovalDetail &) const = default;
};

/// Everything that an item's removal touches, and what it leaves on purpose. The home folder is written "~".
QList<RemovalDetail> removalDetails(const RemovableItem &item, const QString &home);

/// A question as its sheet shows it.
struct ConfirmationText {
    Q_GADGET
    QML_VALUE_TYPE(confirmationText)
    Q_PROPERTY(QString title MEMBER title)
    Q_PROPERTY(QString message MEMBER message)
    Q_PROPERTY(QString warning MEMBER warning)
    Q_PROPERTY(QString confirmLabel MEMBER confirmLabel)
    Q_PROPERTY(QString letter MEMBER letter)
    Q_PROPERTY(int tileColor MEMBER tileColor)
    Q_PROPERTY(QString trust MEMBER trust)
    Q_PROPERTY(QString recommendation MEMBER recommendation)
    Q_PROPERTY(int recommendationTint READ recommendationTintIndex)

public:
    QString title;
    QString message;
    QString warning; ///< beneath it; empty when there is none
    QString confirmLabel;
    QString letter; ///< of the program's tile; empty for a removal
    int tileColor = 0;
    QString trust; ///< "Trust 65"; empty for a removal
    QString recommendation;
    Tint recommendationTint = Tint::green;
    QList<RemovalDetail> details; ///< shown as rows of their own

    int recommendationTintIndex() const { return static_cast<int>(recommendationTint); }
    bool operator==(const ConfirmationText &) const = default;
};

/// programName is that of the program to quit, empty for a removal.
ConfirmationText confirmationText(const ConfirmationInfo &info, const QString &programName);

/// What the container engine can do without.
QString dockerClutterText();
/// "Trust 65".
QString trustText(int trustRatio);
/// "Quit Render Studio"; empty for no program.
QString quitLabelText(const QString &programName);

Tint tintOf(ActionRecommendation recommendation);

} // namespace swabby
