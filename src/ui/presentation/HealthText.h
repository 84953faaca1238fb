#pragma once

#include "health/HealthIssue.h"
#include "ui/presentation/Tint.h"

#include <QtCore/QList>
#include <QtCore/QObject>
#include <QtQmlIntegration/qqmlintegration.h>

#include <optional>

namespace swabby {

/// One health issue as its card shows it.
struct IssueCard {
    Q_GADGET
    QML_VALUE_TYPE(issueCard)
    Q_PROPERTY(int tint READ tintIndex)
    Q_PROPERTY(QString severity MEMBER severity)
    Q_PROPERTY(QString what MEMBER what)
    Q_PROPERTY(QString why MEMBER why)
    Q_PROPERTY(QString how MEMBER how)
    Q_PROPERTY(QString actionLabel MEMBER actionLabel)
    Q_PROPERTY(bool isDestructive MEMBER isDestructive)
    Q_PROPERTY(bool isOfferedAbove MEMBER isOfferedAbove)
    Q_PROPERTY(int index MEMBER index)

public:
    Tint tint = Tint::orange;
    QString severity; ///< the level in a word, for those who do not see its colour
    QString what;
    QString why;
    QString how;
    QString actionLabel; ///< empty: no button
    bool isDestructive = false;
    bool isOfferedAbove = false; ///< an earlier one of these cards offers to quit the same program
    int index = 0;               ///< among the published issues
    QString id;                  ///< the same from one refresh to the next while it is about the same thing

    int tintIndex() const { return static_cast<int>(tint); }
    bool operator==(const IssueCard &) const = default;
};

/// The issues, in order, of one section or of all.
QList<IssueCard> issueCards(const QList<HealthIssue> &issues, std::optional<MainSection> only = {});

/// "Taking a first look at your Mac…", wherever there are no figures yet.
QString firstLookText(const MachineWords &words);
/// Said where nothing was found.
QString nothingToDoText();
/// Beside the button that begins the full check.
QString checkInvitationText(bool isKnown, bool isHealthy, const MachineWords &words);

} // namespace swabby
