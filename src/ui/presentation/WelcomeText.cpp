#include "ui/presentation/WelcomeText.h"

namespace swabby {

QList<WelcomePoint> welcomePoints(bool hasMenuBarItem, const MachineWords &words)
{
    return {
        {QStringLiteral("gauge.with.dots.needle.67percent"),
         hasMenuBarItem ? QStringLiteral("Always in the %1").arg(words.panel)
                        : QStringLiteral("How it is at a glance"),
         QStringLiteral("Green is fine, yellow is busy, red needs you.")},
        {QStringLiteral("checkmark.seal"), QStringLiteral("One %1 checks everything").arg(words.press),
         untilConfirmedText()},
        {QStringLiteral("sparkles"), QStringLiteral("Ask in your own words"),
         QStringLiteral(
             "Only figures, names and paths are sent, and two numbers once a week; never what is in "
             "your files.")},
    };
}

QString untilConfirmedText()
{
    return QStringLiteral("Nothing is removed until you confirm.");
}

} // namespace swabby
