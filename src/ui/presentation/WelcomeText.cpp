#include "ui/presentation/WelcomeText.h"

namespace swabby {

QList<WelcomePoint> welcomePoints(TrayItem::Place place, const MachineWords &words)
{
    QList<WelcomePoint> points = {
        {QStringLiteral("gauge.with.dots.needle.67percent"),
         place == TrayItem::Place::there ? QStringLiteral("Always in the %1").arg(words.panel)
                                         : QStringLiteral("How it is at a glance"),
         QStringLiteral("Green is fine, yellow is busy, red needs you.")},
        {QStringLiteral("checkmark.seal"), QStringLiteral("One %1 checks everything").arg(words.press),
         untilConfirmedText()},
        {QStringLiteral("sparkles"), QStringLiteral("Ask in your own words"),
         QStringLiteral(
             "Only figures, names and paths are sent, and two numbers once a week; never what is in "
             "your files.")},
    };
    if (place == TrayItem::Place::none)
        points.append(
            {QStringLiteral("power"), QStringLiteral("Runs while its window is open"),
             QStringLiteral("This desktop has no place for its item, so closing the window or Ctrl+Q "
                            "ends Swabby.")});
    return points;
}

QString untilConfirmedText()
{
    return QStringLiteral("Nothing is removed until you confirm.");
}

} // namespace swabby
