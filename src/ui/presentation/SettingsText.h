#pragma once

#include "settings/Settings.h"
#include "ui/presentation/Tint.h"

#include <QtCore/QDateTime>
#include <QtCore/QList>
#include <QtCore/QLocale>
#include <QtCore/QObject>
#include <QtQmlIntegration/qqmlintegration.h>

#include <optional>

namespace swabby {

/// A setting that is a figure, as its slider shows it.
struct SliderSetting {
    Q_GADGET
    QML_VALUE_TYPE(sliderSetting)
    Q_PROPERTY(QString key MEMBER key)
    Q_PROPERTY(QString label MEMBER label)
    Q_PROPERTY(QString detail MEMBER detail)
    Q_PROPERTY(double from MEMBER from)
    Q_PROPERTY(double to MEMBER to)
    Q_PROPERTY(double step MEMBER step)
    Q_PROPERTY(double value MEMBER value)
    Q_PROPERTY(QString valueText MEMBER valueText)
    Q_PROPERTY(int tint READ tintIndex)

public:
    QString key;
    QString label;
    QString detail;
    double from = 0;
    double to = 0;
    double step = 0;
    double value = 0;
    QString valueText;
    Tint tint = Tint::accent;

    int tintIndex() const { return static_cast<int>(tint); }
    bool operator==(const SliderSetting &) const = default;
};

/// The thresholds, with the values in force.
QList<SliderSetting> thresholdSettings(const Settings &settings);
/// When the cleanup reminder comes.
SliderSetting reminderSetting(const Settings &settings);
/// The same slider at another value, brought into its range and onto its steps.
SliderSetting movedTo(const SliderSetting &slider, double value);

/// "Notifications are silent until 10:15 AM."; empty when nothing is snoozed at that moment. Seconds since
/// 1970.
QString snoozeSentence(const std::optional<double> &until, double now, const QLocale &locale);

/// What was typed, pasted or dropped as a whole path: blanks and a closing slash cut off, "~" is the home
/// folder, a file's address its path. None when it is no whole path, or the whole disk.
std::optional<QString> excludedPath(const QString &typed, const QString &home);

} // namespace swabby
