#pragma once

#include "flows/health/FullCheck.h"
#include "ui/presentation/ProcessText.h"
#include "ui/presentation/StartupText.h"

#include <QtCore/QList>
#include <QtCore/QObject>
#include <QtQmlIntegration/qqmlintegration.h>

namespace swabby {

/// A step of the full check, done or still to come.
struct CheckStep {
    Q_GADGET
    QML_VALUE_TYPE(checkStep)
    Q_PROPERTY(QString text MEMBER text)
    Q_PROPERTY(bool isDone MEMBER isDone)
    Q_PROPERTY(QString spoken READ spoken)

public:
    QString text;
    bool isDone = false;

    QString spoken() const;
    bool operator==(const CheckStep &) const = default;
};

QList<CheckStep> checkSteps(const QStringList &completed);

/// The startup items to review that are still there and were not ignored.
QList<StartupRowText> startupReviewTexts(const FullCheck &check, const QList<LoginItem> &present);

/// The program worth watching; its detail is how busy it is.
ProcessRowText watchedText(const ProcessSample &process, const MachineWords &words);

/// What the check looks at, or that all of it was looked at.
QString lookingAtText(const FullCheck &check);

/// What goes by name beside the counts and sizes while a check runs, or that nothing goes at all.
QString namesSentText(bool usesAssistant);

/// Why there is no result; empty when there is one.
QString noResultText(const SwabbyCheckResult &result, bool isStopped);

/// The result in a sentence or two; empty where nothing was found and that would only be said again.
QString summaryText(const SwabbyCheckResult &result);

/// What of the result was removed meanwhile, which its summary does not know; empty for nothing.
QString removedSinceText(const std::vector<RemovableItem> &removed);

/// What left this computer for the result, in a sentence; empty when nothing did.
QString sentText(const SwabbyCheckResult &result);

} // namespace swabby
