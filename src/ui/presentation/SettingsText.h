#pragma once

#include "platform/MachineWords.h"
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
    Q_PROPERTY(QList<double> stops MEMBER stops)
    Q_PROPERTY(double value MEMBER value)
    Q_PROPERTY(QString valueText MEMBER valueText)
    Q_PROPERTY(int tint READ tintIndex)

public:
    QString key;
    QString label;
    QString detail;
    QList<double> stops; ///< the values that it can be moved to, rising
    double value = 0;    ///< in force; perhaps none of them
    QString valueText;
    Tint tint = Tint::accent;

    int tintIndex() const { return static_cast<int>(tint); }
    bool operator==(const SliderSetting &) const = default;
};

/// A setting that is on or off, as its row shows it.
struct SwitchSetting {
    Q_GADGET
    QML_VALUE_TYPE(switchSetting)
    Q_PROPERTY(QString key MEMBER key)
    Q_PROPERTY(QString label MEMBER label)
    Q_PROPERTY(QString detail MEMBER detail)
    Q_PROPERTY(bool isOn MEMBER isOn)

public:
    QString key; ///< empty for the one that the system keeps
    QString label;
    QString detail;
    bool isOn = false;

    bool operator==(const SwitchSetting &) const = default;
};

/// A setting that is a line of text, as its field shows it.
struct TextSetting {
    Q_GADGET
    QML_VALUE_TYPE(textSetting)
    Q_PROPERTY(QString key MEMBER key)
    Q_PROPERTY(QString label MEMBER label)
    Q_PROPERTY(QString placeholder MEMBER placeholder)
    Q_PROPERTY(QString value MEMBER value)

public:
    QString key;
    QString label;
    QString placeholder; ///< what stands for nothing
    QString value;

    bool operator==(const TextSetting &) const = default;
};

TextSetting modelSetting(const Settings &settings);
TextSetting addressSetting(const Settings &settings);

SwitchSetting dockSetting(const Settings &settings);
SwitchSetting redNotificationSetting(const Settings &settings, const MachineWords &words);
SwitchSetting storageNotificationSetting(const Settings &settings);
SwitchSetting weeklySetting(const Settings &settings);
SwitchSetting assistantSetting(const Settings &settings);
SwitchSetting loginSetting(bool isOn);

/// The thresholds, with the values in force.
QList<SliderSetting> thresholdSettings(const Settings &settings, const MachineWords &words);
/// When the cleanup reminder comes.
SliderSetting reminderSetting(const Settings &settings);
/// The same slider at the stop nearest to a value that leaves a critical threshold above its warning, as the
/// sliders beside it stand; where there is none, as it is.
SliderSetting movedTo(const SliderSetting &slider, double value, const QList<SliderSetting> &beside = {});

bool isSnoozed(const std::optional<double> &until, double now);
/// "Notifications are silent until 10:15 AM.", or that nothing is snoozed at that moment. Seconds since 1970.
QString snoozeSentence(const std::optional<double> &until, double now, bool hasSummary,
                       const QLocale &locale);

/// What is sent to the assistant, and when.
QString whatIsSentText();

/// How it stands with the person's own key. Stored comes first while it is tried, then working or refused.
enum class KeyStanding { unknown, none, stored, works, worksNot, locked, notKept, notRemoved };
/// Whether there is a key, or what went wrong; empty while nobody has looked. The reason is why it does not
/// work.
QString keySentence(KeyStanding standing, bool isBusy, const QString &reason = {});
/// In the field for the key.
QString keyPlaceholder(bool isStored);

/// The product, its version if that is known, and its licence.
QString aboutText(const QString &version);

/// What was typed, pasted or dropped as a whole path: blanks and a closing slash cut off, "~" is the home
/// folder, a file's address its path. None when it is no whole path, or the whole disk.
std::optional<QString> excludedPath(const QString &typed, const QString &home);

} // namespace swabby
