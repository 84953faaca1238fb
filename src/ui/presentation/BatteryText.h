#pragma once

#include "engine/SystemStats.h"
#include "platform/MachineWords.h"
#include "ui/presentation/Tint.h"

#include <QtCore/QList>
#include <QtCore/QObject>
#include <QtQmlIntegration/qqmlintegration.h>

namespace swabby {

/// A labelled figure, e.g. "Charge cycles" and "312".
struct Fact {
    Q_GADGET
    QML_VALUE_TYPE(fact)
    Q_PROPERTY(QString label MEMBER label)
    Q_PROPERTY(QString value MEMBER value)

public:
    QString label;
    QString value;

    bool operator==(const Fact &) const = default;
};

/// The battery in words.
struct BatterySummary {
    Q_GADGET
    QML_VALUE_TYPE(batterySummary)
    Q_PROPERTY(bool isPresent MEMBER isPresent)
    Q_PROPERTY(QString percent MEMBER percent)
    Q_PROPERTY(double fraction MEMBER fraction)
    Q_PROPERTY(int tint READ tintIndex)
    Q_PROPERTY(QString headline MEMBER headline)
    Q_PROPERTY(QString condition MEMBER condition)
    Q_PROPERTY(QString drainersHeading MEMBER drainersHeading)
    Q_PROPERTY(QList<swabby::Fact> facts MEMBER facts)

public:
    bool isPresent = false;
    QString percent;
    double fraction = 0;
    Tint tint = Tint::green;
    QString headline;
    QString condition; ///< empty when the battery's health is unknown
    QString drainersHeading = QStringLiteral("Using the most energy"); ///< where there is no battery
    QList<Fact> facts;

    int tintIndex() const { return static_cast<int>(tint); }
    bool operator==(const BatterySummary &) const = default;
};

BatterySummary batterySummary(const SystemStats &stats, const MachineWords &words);

} // namespace swabby
