#include "ui/presentation/SettingsText.h"

#include "ai/ModelText.h"
#include "engine/TimeText.h"

#include <QtCore/QDir>
#include <QtCore/QUrl>

#include <algorithm>
#include <cmath>
#include <limits>

namespace swabby {
namespace {

QString valueText(const SliderSetting &slider)
{
    const QString number = QString::number(slider.value, 'g', 4);
    return slider.key == QLatin1String(setting<"storageNotifyThresholdGB">.name)
               ? number + QStringLiteral(" GB")
               : number + QLatin1Char('%');
}

QList<double> stopsBetween(int first, int last, int step)
{
    QList<double> stops;
    for (int stop = first; stop <= last; stop += step)
        stops.append(stop);
    return stops;
}

SliderSetting sliderSetting(const Settings &settings, const Setting<double> &key, const QString &label,
                            const QString &detail, Tint tint, const QList<double> &stops)
{
    SliderSetting slider = {QLatin1String(key.name), label, detail, stops, settings.value(key), {}, tint};
    slider.valueText = valueText(slider);
    return slider;
}

/// Between what a threshold may stand, neither of them included.
std::pair<double, double> boundsOf(const SliderSetting &slider, const QList<SliderSetting> &beside)
{
    constexpr double infinity = std::numeric_limits<double>::infinity();
    const auto at = [&](const Setting<double> &key, double elsewhere) {
        for (const SliderSetting &other : beside)
            if (other.key == QLatin1String(key.name))
                return other.value;
        return elsewhere;
    };
    for (const Thresholds &pair : thresholdPairs) {
        if (slider.key == QLatin1String(pair.warning.name))
            return {-infinity, at(pair.critical, infinity)};
        if (slider.key == QLatin1String(pair.critical.name))
            return {at(pair.warning, -infinity), infinity};
    }
    return {-infinity, infinity};
}

} // namespace

SwitchSetting dockSetting(const Settings &settings)
{
    return {QLatin1String(setting<"showInDock">.name), QStringLiteral("Show Swabby in the Dock"),
            QStringLiteral("While one of its windows is open it always shows there"),
            settings.value(setting<"showInDock">)};
}

SwitchSetting redNotificationSetting(const Settings &settings, const MachineWords &words)
{
    return {QLatin1String(setting<"notifyOnRed">.name), QStringLiteral("Notify when attention is needed"),
            QStringLiteral("One message when your %1 starts struggling").arg(words.computer),
            settings.value(setting<"notifyOnRed">)};
}

SwitchSetting storageNotificationSetting(const Settings &settings)
{
    return {QLatin1String(setting<"notifyOnStorage">.name),
            QStringLiteral("Notify when there's a lot to clean up"),
            QStringLiteral("Looked at every three days at most"), settings.value(setting<"notifyOnStorage">)};
}

SwitchSetting weeklySetting(const Settings &settings)
{
    return {QLatin1String(setting<"notifyWeekly">.name), QStringLiteral("Send a weekly summary"),
            QStringLiteral("What was freed and what needed attention, in a sentence"),
            settings.value(setting<"notifyWeekly">)};
}

SwitchSetting assistantSetting(const Settings &settings)
{
    return {
        QLatin1String(setting<"aiEnabled">.name), QStringLiteral("Use the AI assistant"),
        QStringLiteral("It explains programs and answers questions. Without it nothing is sent anywhere."),
        settings.value(setting<"aiEnabled">)};
}

TextSetting modelSetting(const Settings &settings)
{
    return {QLatin1String(setting<"aiModel">.name), QStringLiteral("Model"), QLatin1String(builtInModel),
            settings.value(setting<"aiModel">)};
}

TextSetting addressSetting(const Settings &settings)
{
    return {QLatin1String(setting<"aiAddress">.name), QStringLiteral("Address"),
            QStringLiteral("The maker's own"), settings.value(setting<"aiAddress">)};
}

SwitchSetting loginSetting(bool isOn)
{
    return {{},
            QStringLiteral("Open automatically on login"),
            QStringLiteral("It starts quietly, without a window"),
            isOn};
}

QList<SliderSetting> thresholdSettings(const Settings &settings, const MachineWords &words)
{
    const QList<double> warnings = stopsBetween(40, 95, 5);
    const QList<double> criticals = stopsBetween(45, 100, 5);
    return {
        sliderSetting(settings, setting<"cpuYellow">, QStringLiteral("Speed warning threshold"),
                      QStringLiteral("When your %1 works harder than usual").arg(words.computer),
                      Tint::orange, warnings),
        sliderSetting(settings, setting<"cpuRed">, QStringLiteral("Speed critical threshold"),
                      QStringLiteral("When it is working very hard"), Tint::red, criticals),
        sliderSetting(settings, setting<"memYellow">, QStringLiteral("Memory warning threshold"),
                      QStringLiteral("When memory is filling up"), Tint::orange, warnings),
        sliderSetting(settings, setting<"memRed">, QStringLiteral("Memory critical threshold"),
                      QStringLiteral("When it is almost out"), Tint::red, criticals),
        sliderSetting(settings, setting<"processCpuRed">, QStringLiteral("Single app power limit"),
                      QStringLiteral("When one app is too much by itself"), Tint::accent,
                      stopsBetween(20, 100, 10)),
    };
}

SliderSetting reminderSetting(const Settings &settings)
{
    return sliderSetting(settings, setting<"storageNotifyThresholdGB">,
                         QStringLiteral("Remind me once this much could be freed"), {}, Tint::accent,
                         {0.5, 1, 2, 5, 10, 20, 50});
}

SliderSetting movedTo(const SliderSetting &slider, double value, const QList<SliderSetting> &beside)
{
    SliderSetting moved = slider;
    const auto [above, below] = boundsOf(slider, beside);
    double nearest = std::numeric_limits<double>::infinity();
    for (const double stop : slider.stops)
        if (stop > above && stop < below && std::abs(stop - value) <= nearest) {
            nearest = std::abs(stop - value);
            moved.value = stop;
        }
    moved.valueText = valueText(moved);
    return moved;
}

bool isSnoozed(const std::optional<double> &until, double now)
{
    return until && *until > now;
}

QString snoozeSentence(const std::optional<double> &until, double now, bool hasSummary, const QLocale &locale)
{
    if (!isSnoozed(until, now))
        return QStringLiteral("Nothing is snoozed.") +
               (hasSummary ? QStringLiteral(" The weekly summary comes either way.") : QString());
    const QDateTime time = QDateTime::fromMSecsSinceEpoch(static_cast<qint64>(*until * 1'000));
    return QStringLiteral("Notifications are silent until %1.").arg(timeOfDayToTheMinute(time, locale));
}

QString whatIsSentText()
{
    return QStringLiteral(
        "With a question: the figures and the busiest programs' names.\n"
        "With an explanation: that program's name, path and load, or that startup item's label and path.\n"
        "With a full check: counts, sizes and the name of the app to watch.\n"
        "There and on the storage page: names and sizes of cache folders that Swabby does not know.\n"
        "Once a week: two numbers for the summary.\n"
        "Never what is in your files.");
}

QString keySentence(KeyStanding standing, bool isBusy, const QString &reason)
{
    switch (standing) {
    case KeyStanding::unknown:
        return isBusy ? QStringLiteral("Looking for your key…") : QString();
    case KeyStanding::none:
        return QStringLiteral("No key of yours is stored.");
    case KeyStanding::stored:
        return isBusy ? QStringLiteral("Your key is stored with your passwords. Trying it…")
                      : QStringLiteral("Your key is stored with your passwords.");
    case KeyStanding::works:
        return QStringLiteral("Your key is stored with your passwords, and it works.");
    case KeyStanding::worksNot:
        return QStringLiteral("Your key is stored with your passwords, but trying it failed. ") + reason;
    case KeyStanding::locked:
        return QStringLiteral(
            "Your password store is locked or does not answer, so it cannot be told whether "
            "a key is stored.");
    case KeyStanding::notKept:
        return QStringLiteral("The key could not be kept, so it was stored nowhere.");
    case KeyStanding::notRemoved:
        return QStringLiteral("The key could not be removed. It is still stored.");
    }
    return {};
}

QString keyPlaceholder(bool isStored)
{
    return isStored ? QStringLiteral("Another key") : QStringLiteral("Paste your key");
}

QString aboutText(const QString &version)
{
    const QString name =
        QStringLiteral("Swabby") + (version.isEmpty() ? QString() : QLatin1Char(' ') + version);
    return name + QStringLiteral(" · Free software under the Apache License 2.0");
}

std::optional<QString> excludedPath(const QString &typed, const QString &home)
{
    QString path = typed.trimmed();
    if (path.startsWith(QLatin1String("file:")))
        path = QUrl(path).toLocalFile();
    path = withHome(path, home);
    if (!path.startsWith(QLatin1Char('/')))
        return std::nullopt;
    path = QDir::cleanPath(path);
    return path == QLatin1String("/") ? std::nullopt : std::optional(path);
}

} // namespace swabby
