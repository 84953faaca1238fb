#include "ui/presentation/NoticeText.h"

#include "ui/presentation/PlainWords.h"

namespace swabby {

QString noticeText(Notice notice, const QString &name)
{
    switch (notice) {
    case Notice::notStored:
        return QStringLiteral("That could not be kept. Is the disk full?");
    case Notice::historyNotStored:
        return QStringLiteral("The last day's history could not be kept: ") + oneLine(name);
    case Notice::notFollowed:
        return QStringLiteral("That could not be changed on this computer.");
    case Notice::notAPath:
        return QStringLiteral("Write the whole path of a file or folder, beginning with / or ~.");
    case Notice::notThere:
        return QStringLiteral("Nothing is at ") + oneLine(name) +
               QStringLiteral(" yet. What comes there will be kept.");
    case Notice::notTaken:
        return QStringLiteral("That was not kept; it takes ") + oneLine(name) + QLatin1Char('.');
    case Notice::nothingToShowWith:
        return QStringLiteral("There is nothing here to show that with.");
    case Notice::notQuit:
        return oneLine(name) + QStringLiteral(" could not be quit. It may have ended already.");
    case Notice::isGone:
        return oneLine(name) + QStringLiteral(" is not running any more.");
    case Notice::holdsSession:
        return oneLine(name) + QStringLiteral(" keeps your session running, so it is not quit here.");
    case Notice::isRunning:
        return oneLine(name) + QStringLiteral(" is running — quit it first.");
    }
    return {};
}

} // namespace swabby
