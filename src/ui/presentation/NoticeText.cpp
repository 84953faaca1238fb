#include "ui/presentation/NoticeText.h"

#include "ui/presentation/PlainWords.h"

#include <QtCore/QRegularExpression>

namespace swabby {

QString noticeText(Notice notice, const QString &name)
{
    switch (notice) {
    case Notice::notStored:
        return oneLine(name) + QStringLiteral(" could not be kept. Is the disk full?");
    case Notice::historyNotStored:
        return QStringLiteral("The last day's history could not be kept: ") + oneLine(name);
    case Notice::notFollowed:
        return oneLine(name) + QStringLiteral(" could not be changed on this computer.");
    case Notice::notAPath:
        return QStringLiteral("Write the whole path of a file or folder, beginning with / or ~.");
    case Notice::notThere:
        return QStringLiteral("Nothing is at ") + oneLine(name) +
               QStringLiteral(" yet. What comes there will be kept.");
    case Notice::nothingToShowWith:
        return QStringLiteral("There is nothing here to show %1 with.").arg(oneLine(name));
    case Notice::isGone:
        return oneLine(name) + QStringLiteral(" is not running any more.");
    case Notice::isRunning:
        return oneLine(name) + QStringLiteral(" is running — quit it first.");
    }
    return {};
}

QString notTakenText(const QString &name, const QString &taken)
{
    return QStringLiteral("%1 was not kept; it takes %2.").arg(oneLine(name), oneLine(taken));
}

QString notQuitHereText(const ProcessSample &process)
{
    return oneLine(process.name) + QLatin1Char(' ') + whyNotQuit(process) +
           QStringLiteral(", so it is not quit here.");
}

QString quitText(const ProcessSample &process, Quitting::Means means, Quitting::Outcome outcome)
{
    using Quitting::Outcome;
    if (isOver(outcome))
        return {};
    const QString name = oneLine(process.name);
    if (outcome == Outcome::notTold && process.mayBeQuit())
        return name + QStringLiteral(" could not be quit. It may have ended already.");
    const QString runsOn = name + QStringLiteral(" is still running");
    if (outcome == Outcome::notTold)
        return runsOn + QStringLiteral(": it ") + whyNotQuit(process) + QLatin1Char('.');
    if (outcome == Outcome::isAsked)
        return runsOn + QStringLiteral(" — it may be asking you something in its own window.");
    return runsOn + (means == Quitting::Means::kill ? QStringLiteral(": the system has not let go of it yet.")
                     : means == Quitting::Means::terminate
                         ? QStringLiteral(". If it stays, Force Quit ends it.")
                         : QStringLiteral(". It was asked to quit; quit it again to end it."));
}

QString unopenedText(const QString &errors)
{
    static const QRegularExpression missing(
        QStringLiteral("module \"([A-Za-z.]+)\" (is not installed|plugin)"));
    const QString module = missing.match(errors).captured(1);
    if (module.isEmpty())
        return QStringLiteral("its windows cannot be opened: ") + oneLine(errors);
    return QStringLiteral("its windows need the QML module %1, which is not installed; Debian has it as "
                          "qml6-module-%2")
        .arg(module, module.toLower().replace(QLatin1Char('.'), QLatin1Char('-')));
}

} // namespace swabby
